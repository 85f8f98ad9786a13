#include "shell/settings/OwnCategories.h"

#include "shell/look/Controls.h"
#include "shell/look/FlowLayout.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/settings/SettingsSection.h"
#include "shell/signals/Subscribe.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <QVBoxLayout>
#include <memory>

namespace quorvane {
namespace {

constexpr int pillHeight = 28;

/// A round edge around a name and its button.
class Pill : public QFrame {
public:
    explicit Pill(const QString& name, QWidget* button) {
        setFixedHeight(pillHeight);
        auto* const line = new QHBoxLayout(this);
        line->setContentsMargins(10, 0, 0, 0);
        line->setSpacing(0);
        line->addWidget(new Label(name, TypeRole::label, &Theme::text));
        line->addWidget(button);
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        paintPanel(painter, rect(), pillHeight / 2.0, theme().surface, theme().line);
    }
};

}  // namespace

OwnCategories::OwnCategories(AppCategoryManagementView& view, const Localization& localization, QWidget* parent)
    : QWidget(parent), view_(view), localization_(localization) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    auto* const section = new SettingsSection(qt(localization.text("category_management_title")));
    column->addWidget(section);
    auto* const content = new QWidget;
    auto* const lines = new QVBoxLayout(content);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(10);
    empty_ = new Label(qt(localization.text("category_management_empty")), TypeRole::body, &Theme::text2);
    pillsArea_ = new QWidget;
    pills_ = new FlowLayout(8, pillsArea_);
    pills_->setContentsMargins(0, 0, 0, 0);
    lines->addWidget(empty_);
    lines->addWidget(pillsArea_);
    lines->addWidget(field());
    section->addRow(content);
    subscribe(view_.changed, *this, [this] { showCategories(); });
    showCategories();
}

QWidget* OwnCategories::field() {
    const QString placeholder = qt(localization_.text("category_management_placeholder"));
    auto* const area = new QWidget;
    auto* const line = new QHBoxLayout(area);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(8);
    name_ = new QLineEdit;
    name_->setPlaceholderText(placeholder);
    name_->setAccessibleName(placeholder);
    connect(name_, &QLineEdit::returnPressed, this, [this] { add(); });
    auto* const plus = iconButton(QStringLiteral("plus"), qt(localization_.text("ui_add_category")), "plain");
    connect(plus, &QAbstractButton::clicked, this, [this] { add(); });
    line->addWidget(name_, 1);
    line->addWidget(plus);
    return area;
}

void OwnCategories::add() {
    view_.newCategoryName = name_->text().toStdString();
    view_.addCategory();
    name_->clear();
}

void OwnCategories::showCategories() {
    while (const std::unique_ptr<QLayoutItem> item{pills_->takeAt(0)}) {
        item->widget()->hide();
        item->widget()->deleteLater();
    }
    for (const std::string& category : view_.customCategories())
        addPill(category);
    empty_->setVisible(view_.customCategories().empty());
    pillsArea_->setVisible(!view_.customCategories().empty());
    pillsArea_->updateGeometry();
}

void OwnCategories::addPill(const std::string& category) {
    auto* const remove =
        iconButton(QStringLiteral("close"), qt(localization_.text("a11y_remove", category)), "ghost small");
    connect(remove, &QAbstractButton::clicked, this, [this, category] {
        view_.removeCategory(std::string(category));  // the button that lent it goes
        name_->setFocus(Qt::TabFocusReason);
    });
    auto* const pill = new Pill(isolated(qt(category)), remove);
    pills_->addWidget(pill);
    pill->show();
}

}  // namespace quorvane
