#include "shell/chart/CategoryLine.h"

#include "base/Text.h"
#include "shell/look/Chip.h"
#include "shell/look/Controls.h"
#include "shell/look/FlowLayout.h"
#include "shell/look/IconView.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"
#include "store/StoredNames.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <chrono>
#include <memory>

namespace quorvane {
namespace {

constexpr std::chrono::milliseconds successStay{2000};

void addChip(FlowLayout& chips, const std::string& text, Chip::Tone tone) {
    auto* const chip = new Chip(qt(text), tone);
    chip->setAccessibleName(qt(text));
    chips.addWidget(chip);
    chip->show();
}

}  // namespace

CategoryLine::CategoryLine(const Localization& localization, QWidget* parent)
    : QWidget(parent), localization_(localization), chips_(new FlowLayout(8)),
      edit_(iconButton(QStringLiteral("pencil"),
                       qt(localization.text("a11y_edit", localization.text("ui_category_and_tags"))), "ghost small")) {
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto* const mark = new QVBoxLayout;
    mark->setContentsMargins(0, 6, 10, 0);
    mark->addWidget(new IconView(QStringLiteral("tag"), 16, &Theme::text2), 0, Qt::AlignTop);
    layout->addLayout(mark);
    chips_->setContentsMargins(0, 2, 4, 0);
    layout->addLayout(chips_, 1);
    layout->addWidget(edit_, 0, Qt::AlignTop);
    success_.setSingleShot(true);
    success_.setInterval(successStay);
    connect(&success_, &QTimer::timeout, this, [this] { edit_->setIcon(icon(QStringLiteral("pencil"))); });
    connect(edit_, &QAbstractButton::clicked, this, [this] { editWanted.send(); });
}

void CategoryLine::setChoice(const std::optional<std::string>& category, const std::string& tags) {
    while (const std::unique_ptr<QLayoutItem> item{chips_->takeAt(0)})
        delete item->widget();
    if (category && !category->empty())
        addChip(*chips_, StoredNames::shownCategory(*category, localization_), Chip::Tone::info);
    for (const std::string& piece : text::split(tags, ','))
        if (const auto tag = text::trimmedWithNewlines(piece); !tag.empty())
            addChip(*chips_, StoredNames::shownTag(tag, localization_), Chip::Tone::neutral);
    updateGeometry();
}

void CategoryLine::showMarkingSuccess() {
    edit_->setIcon(icon(QStringLiteral("check-circle")));
    success_.start();
}

}  // namespace quorvane
