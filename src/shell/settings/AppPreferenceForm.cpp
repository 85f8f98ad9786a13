#include "shell/settings/AppPreferenceForm.h"

#include "shell/look/Chip.h"
#include "shell/look/Controls.h"
#include "shell/look/FlowLayout.h"
#include "shell/look/Label.h"
#include "shell/look/TextField.h"
#include "shell/look/Theme.h"
#include "store/StoredNames.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QVBoxLayout>

namespace quorvane {
namespace {

constexpr int headGap = 8;
constexpr int sectionGap = 20;

}  // namespace

AppPreferenceForm::AppPreferenceForm(AppCategoryManagementView& view, const Localization& localization, QWidget* parent)
    : QWidget(parent), view_(view), localization_(localization) {
    auto* const page = new QVBoxLayout(this);
    page->setContentsMargins(0, 0, 0, 0);
    page->setSpacing(headGap);
    addName(*page);
    page->addSpacing(sectionGap - headGap);
    addCategories(*page);
    page->addSpacing(sectionGap - headGap);
    addTags(*page);
}

void AppPreferenceForm::addName(QVBoxLayout& page) {
    const QString title = qt(localization_.text("app_pref_app_name_label"));
    page.addWidget(new Label(title, TypeRole::label, &Theme::text2));
    auto* const name = new TextField(title, title);
    name->setHint(qt(localization_.text("app_pref_app_name_placeholder")));
    name->edit().setText(qt(view_.newAppName));
    connect(&name->edit(), &QLineEdit::textChanged, this, [this](const QString& text) {
        view_.newAppName = text.toStdString();
        if (nameChanged_) nameChanged_();
    });
    setFocusProxy(&name->edit());
    page.addWidget(name);
}

void AppPreferenceForm::addCategories(QVBoxLayout& page) {
    page.addWidget(new Label(qt(localization_.text("app_pref_select_category")), TypeRole::label, &Theme::text2));
    auto* const flow = new FlowLayout(8);
    page.addLayout(flow);
    for (const std::string& name : view_.offeredCategories()) {
        auto* const chip = choiceChip(qt(StoredNames::shownCategory(name, localization_)));
        connect(chip, &QAbstractButton::clicked, this,
                [this, name](bool isChecked) { choose(isChecked ? std::optional(name) : std::nullopt); });
        flow->addWidget(chip);
        categories_[name] = chip;
    }
    choose(view_.newAppCategory);
}

void AppPreferenceForm::choose(const std::optional<std::string>& category) {
    view_.newAppCategory = category;
    for (const auto& [name, chip] : categories_)
        chip->setChecked(name == category);
}

void AppPreferenceForm::addTags(QVBoxLayout& page) {
    auto* const head = new QHBoxLayout;
    head->addWidget(new Label(qt(localization_.text("app_pref_select_tags")), TypeRole::label, &Theme::text2), 1);
    count_ = new Label({}, TypeRole::caption, &Theme::text3);
    head->addWidget(count_);
    page.addLayout(head);
    tagFlow_ = new FlowLayout(6);
    page.addLayout(tagFlow_);
    const QString placeholder = qt(localization_.text("app_pref_custom_tag_placeholder"));
    customTag_ = new TextField(placeholder, placeholder);
    connect(&customTag_->edit(), &QLineEdit::textChanged, this,
            [this](const QString& text) { view_.customTag = text.toStdString(); });
    connect(&customTag_->edit(), &QLineEdit::returnPressed, this, [this] { enterTag(); });
    page.addSpacing(2);
    page.addWidget(customTag_);
    showTags();
}

void AppPreferenceForm::showTags() {
    for (const std::string& tag : view_.offeredTags()) {
        if (!tags_.contains(tag)) {
            auto* const chip = choiceChip(qt(StoredNames::shownTag(tag, localization_)), true);
            connect(chip, &QAbstractButton::clicked, this, [this, tag] {
                view_.toggleTag(tag);
                showCount();
            });
            tagFlow_->addWidget(chip);
            chip->show();
            tags_[tag] = chip;
        }
        tags_[tag]->setChecked(view_.newAppTags.contains(tag));
    }
    showCount();
}

void AppPreferenceForm::showCount() {
    count_->setText(qt(localization_.text("ui_tags_selected", view_.newAppTags.size())));
}

void AppPreferenceForm::enterTag() {
    view_.addCustomTag();
    customTag_->edit().clear();
    showTags();
}

}  // namespace quorvane
