#pragma once

#include "shell/look/Controls.h"
#include "shell/look/Kind.h"
#include "shell/look/Label.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"
#include "shell/state/PraiseMessageView.h"

#include <QComboBox>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace quorvane {

/// A quiet combo with its label above. The wheel belongs to what it stands on.
template <class Value>
class PraiseChoice : public QWidget {
public:
    using Item = PraiseMessageView::MenuItem<Value>;

    PraiseChoice(const QString& title, std::vector<Item> items, std::function<void(const std::optional<Value>&)> choose,
                 QWidget* parent = nullptr)
        : QWidget(parent), items_(std::move(items)), combo_(new Combo) {
        auto* const column = new QVBoxLayout(this);
        column->setContentsMargins(0, 0, 0, 0);
        column->setSpacing(5);
        column->addWidget(new Label(title, TypeRole::caption, &Theme::text2));
        column->addWidget(combo_);
        combo_->setAccessibleName(title);
        setKind(*combo_, "small quiet");
        combo_->setMinimumContentsLength(4);
        combo_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        for (const Item& item : items_)
            combo_->addItem(qt(item.text));
        connect(combo_, &QComboBox::activated, this,
                [this, use = std::move(choose)](int index) { use(items_[static_cast<std::size_t>(index)].value); });
    }

    void setValue(const std::optional<Value>& value) {
        for (std::size_t i = 0; i < items_.size(); ++i)
            if (items_[i].value == value) combo_->setCurrentIndex(static_cast<int>(i));
    }

private:
    class Combo : public QComboBox {
        void wheelEvent(QWheelEvent* event) override { event->ignore(); }
    };

    std::vector<Item> items_;
    QComboBox* combo_;
};

}  // namespace quorvane
