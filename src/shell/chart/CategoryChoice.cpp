#include "shell/chart/CategoryChoice.h"

#include "rules/CategoryTagManager.h"
#include "shell/look/Boxes.h"
#include "shell/look/Controls.h"
#include "shell/look/FlowLayout.h"
#include "shell/look/IconWell.h"
#include "shell/look/TextField.h"
#include "shell/look/Theme.h"
#include "store/StoredNames.h"

namespace quorvane {
namespace {

constexpr int sectionGap = 20;
constexpr int headGap = 8;

}  // namespace

CategoryChoice::CategoryChoice(Subject subject, const Localization& localization, QWidget* parent)
    : QWidget(parent), subject_(std::move(subject)), localization_(localization) {
    auto* const page = columnBox(headGap, this);
    if (!subject_.suggested.empty()) {
        page->addWidget(suggestions());
        page->addSpacing(sectionGap - headGap);
    }
    page->addWidget(new Label(qt(subject_.title), TypeRole::label, &Theme::text2));
    page->addLayout(categoryChips(subject_.offered));
    page->addSpacing(sectionGap - headGap);
    addTags(*page);
    choose(subject_.category);
}

QWidget* CategoryChoice::suggestions() {
    auto* const well = new IconWell(QStringLiteral("spark"), Tone::info);
    auto& words = well->words();
    words.setSpacing(6);
    words.addWidget(new Label(qt(localization_.text("category_suggestions_title")), TypeRole::label, &Theme::accInk));
    auto* const line = lineBox(10);
    line->addWidget(new Label(qt(localization_.text("category_suggestions_help")), TypeRole::body, &Theme::text));
    line->addLayout(categoryChips(subject_.suggested), 1);
    words.addLayout(line);
    return well;
}

FlowLayout* CategoryChoice::categoryChips(const std::vector<std::string>& names) {
    auto* const flow = new FlowLayout(8);
    for (const std::string& name : names) {
        auto* const chip = choiceChip(qt(StoredNames::shownCategory(name, localization_)));
        connect(chip, &QAbstractButton::clicked, this,
                [this, name](bool isChecked) { choose(isChecked ? std::optional(name) : std::nullopt); });
        flow->addWidget(chip);
        categories_.emplace_back(name, chip);
    }
    return flow;
}

void CategoryChoice::choose(const std::optional<std::string>& category) {
    subject_.category = category;
    for (const auto& [name, chip] : categories_)
        chip->setChecked(name == category);
}

void CategoryChoice::addTags(QVBoxLayout& page) {
    auto* const head = lineBox(headGap);
    head->addWidget(new Label(qt(localization_.text("app_pref_select_tags")), TypeRole::label, &Theme::text2), 1);
    count_ = new Label({}, TypeRole::caption, &Theme::text3);
    head->addWidget(count_);
    page.addLayout(head);
    tagFlow_ = new FlowLayout(6);
    page.addLayout(tagFlow_);
    const QString placeholder = qt(localization_.text("app_pref_custom_tag_placeholder"));
    field_ = new TextField(placeholder, placeholder);
    connect(&field_->edit(), &QLineEdit::returnPressed, this, [this] { finish(); });
    page.addSpacing(2);
    page.addWidget(field_);
    for (const StoredNames::Name& tag : StoredNames::tags)
        showTag(std::string(tag.stored));
    finish();
}

/// Makes its chip if there is none.
void CategoryChoice::showTag(const std::string& tag) {
    auto*& chip = tags_[tag];
    if (chip == nullptr) {
        chip = choiceChip(qt(StoredNames::shownTag(tag, localization_)), true);
        connect(chip, &QAbstractButton::clicked, this, [this, tag](bool isChecked) {
            if (isChecked)
                subject_.tags.insert(tag);
            else
                subject_.tags.erase(tag);
            showCount();
        });
        tagFlow_->addWidget(chip);
        chip->show();
    }
    chip->setChecked(subject_.tags.contains(tag));
}

void CategoryChoice::finish() {
    CategoryTagManager::addTags(subject_.tags, field_->edit().text().toStdString(), localization_);
    field_->edit().clear();
    for (const std::string& tag : subject_.tags)
        showTag(tag);
    showCount();
}

void CategoryChoice::showCount() {
    count_->setText(qt(localization_.text("ui_tags_selected", subject_.tags.size())));
}

}  // namespace quorvane
