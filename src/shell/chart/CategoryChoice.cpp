#include "shell/chart/CategoryChoice.h"

#include "shell/look/Card.h"
#include "shell/look/Chip.h"
#include "shell/look/Controls.h"
#include "shell/look/FlowLayout.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/TextField.h"
#include "shell/look/Theme.h"
#include "store/StoredNames.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int sectionGap = 20;
constexpr int headGap = 8;

template <class Offers>
bool offers(const Offers& offered, const std::string& name) {
    return std::ranges::any_of(offered, [&](const auto& one) { return one.name == name; });
}

}  // namespace

CategoryChoice::CategoryChoice(std::unique_ptr<CategoryPickerState> state, const CategoryTagManager& categories,
                               const Localization& localization, QWidget* parent)
    : QWidget(parent), state_(std::move(state)), localization_(localization) {
    auto* const page = new QVBoxLayout(this);
    page->setContentsMargins(0, 0, 0, 0);
    page->setSpacing(headGap);
    addSuggestions(*page);
    addCategories(*page, categories);
    page->addSpacing(sectionGap - headGap);
    addTags(*page);
    select(state_->selectedCategory);
    showCount();
}

void CategoryChoice::addSuggestions(QVBoxLayout& page) {
    const auto suggested = state_->suggestions();
    if (suggested.empty()) return;
    auto* const well = new Well("info");
    auto* const box = new QVBoxLayout(well);
    box->setContentsMargins(16, 10, 16, 12);
    box->setSpacing(6);
    auto* const head = new QHBoxLayout;
    head->setSpacing(8);
    head->addWidget(new IconView(QStringLiteral("spark"), 16, &Theme::accInk));
    head->addWidget(new Label(qt(localization_.text("category_suggestions_title")), TypeRole::label, &Theme::accInk),
                    1);
    box->addLayout(head);
    auto* const line = new QHBoxLayout;
    line->setSpacing(10);
    line->addWidget(new Label(qt(localization_.text("category_suggestions_help")), TypeRole::body, &Theme::text));
    auto* const flow = new FlowLayout(8);
    line->addLayout(flow, 1);
    box->addLayout(line);
    for (const ActivityCategory category : suggested) {
        const std::string name(rawValue(category));
        if (offers(suggestions_, name)) continue;  // two words in the application's name may suggest the same
        auto* const chip = choiceChip(qt(StoredNames::shownCategory(name, localization_)));
        chip->setCheckable(true);
        connect(chip, &QAbstractButton::clicked, this, [this, name] { select(name); });
        flow->addWidget(chip);
        suggestions_.push_back({name, chip});
    }
    page.addWidget(well);
    page.addSpacing(sectionGap - headGap);
}

void CategoryChoice::addCategories(QVBoxLayout& page, const CategoryTagManager& categories) {
    page.addWidget(new Label(qt(localization_.text("category")), TypeRole::label, &Theme::text2));
    auto* const flow = new FlowLayout(8);
    page.addLayout(flow);
    auto names = categories.allCategories();
    const auto& present = state_->selectedCategory;
    // A category that the user has removed since stays with its records.
    if (present && std::ranges::find(names, *present) == names.end()) names.push_back(*present);
    for (const std::string& name : names) {
        auto* const chip = choiceChip(qt(StoredNames::shownCategory(name, localization_)));
        chip->setCheckable(true);
        connect(chip, &QAbstractButton::clicked, this,
                [this, name](bool isChecked) { select(isChecked ? std::optional(name) : std::nullopt); });
        flow->addWidget(chip);
        categories_.push_back({name, chip});
    }
}

void CategoryChoice::addTags(QVBoxLayout& page) {
    auto* const head = new QHBoxLayout;
    head->addWidget(new Label(qt(localization_.text("app_pref_select_tags")), TypeRole::label, &Theme::text2), 1);
    count_ = new Label({}, TypeRole::caption, &Theme::text3);
    head->addWidget(count_);
    page.addLayout(head);
    tagFlow_ = new FlowLayout(6);
    page.addLayout(tagFlow_);
    for (const StoredNames::Name& tag : StoredNames::tags)
        addTag(std::string(tag.stored));
    for (const std::string& tag : state_->selectedTags)
        if (!offers(tags_, tag)) addTag(tag);
    field_ = new TextField(qt(localization_.text("app_pref_custom_tag_placeholder")),
                           qt(localization_.text("app_pref_custom_tag_placeholder")));
    connect(&field_->edit(), &QLineEdit::returnPressed, this, [this] { enterTags(); });
    page.addSpacing(2);
    page.addWidget(field_);
}

QPushButton* CategoryChoice::addTag(const std::string& tag) {
    auto* const chip = choiceChip(qt(StoredNames::shownTag(tag, localization_)), true);
    chip->setCheckable(true);
    chip->setChecked(state_->selectedTags.contains(tag));
    connect(chip, &QAbstractButton::clicked, this, [this, tag] {
        state_->toggleTag(tag);
        showCount();
    });
    tagFlow_->addWidget(chip);
    tags_.push_back({tag, chip});
    return chip;
}

void CategoryChoice::enterTags() {
    state_->addTags(field_->edit().text().toStdString(), localization_);
    field_->edit().clear();
    for (const std::string& tag : state_->selectedTags)
        if (!offers(tags_, tag)) addTag(tag)->show();
    for (const Offered& offered : tags_)
        offered.chip->setChecked(state_->selectedTags.contains(offered.name));
    showCount();
}

void CategoryChoice::select(const std::optional<std::string>& category) {
    state_->selectedCategory = category;
    for (const auto* const list : {&suggestions_, &categories_})
        for (const Offered& offered : *list)
            offered.chip->setChecked(offered.name == category);
}

void CategoryChoice::showCount() {
    count_->setText(qt(localization_.text("ui_tags_selected", state_->selectedTags.size())));
}

void CategoryChoice::save() {
    enterTags();
    state_->save();
}

}  // namespace quorvane
