#include "rules/CategoryPickerState.h"

#include "base/Text.h"
#include "platform/Clock.h"
#include "store/StoredNames.h"

#include <algorithm>
#include <array>

namespace quorvane {
namespace {

struct Suggestion {
    std::vector<std::string_view> keywords;
    ActivityCategory category;
};

const std::array<Suggestion, 5>& suggestionTable() {
    static const std::array<Suggestion, 5> table{
        {{{"xcode", "cursor", "vscode", "sublime", "atom", "webstorm"}, ActivityCategory::work},
         {{"safari", "chrome", "firefox", "edge"}, ActivityCategory::learn},
         {{"spotify", "music", "youtube", "netflix"}, ActivityCategory::entertainment},
         {{"wechat", "qq", "telegram", "discord"}, ActivityCategory::social},
         {{"pages", "word", "notion", "obsidian"}, ActivityCategory::work}}};
    return table;
}

}  // namespace

std::vector<ActivityCategory> suggestedCategories(std::string_view appName) {
    const std::string name = text::lowercased(appName);
    std::vector<ActivityCategory> suggested;
    for (const Suggestion& row : suggestionTable())
        if (std::any_of(row.keywords.begin(), row.keywords.end(),
                        [&](std::string_view keyword) { return name.find(keyword) != std::string::npos; }))
            suggested.push_back(row.category);
    return suggested;
}

CategoryPickerState::CategoryPickerState(std::shared_ptr<ActivityRecord> record, CategoryTagManager& manager,
                                         ConsoleSink& console)
    : selectedCategory(record->category()), record_(std::move(record)), manager_(manager), console_(console) {
    const auto tags = record_->tagList();
    selectedTags.insert(tags.begin(), tags.end());
    const auto& appName = record_->appName();
    if (selectedCategory || !appName) return;
    const auto remembered = manager_.preference(*appName);
    if (!remembered || !remembered->category) return;
    selectedCategory = remembered->category;
    selectedTags = {remembered->tags.begin(), remembered->tags.end()};
    console_.line("CategoryPickerView: 从偏好中加载了 {} 的分类设置", *appName);
}

std::vector<ActivityCategory> CategoryPickerState::suggestions() const {
    return suggestedCategories(record_->appName().value_or(""));
}

void CategoryPickerState::toggleTag(const std::string& tag) {
    if (selectedTags.erase(tag) == 0) selectedTags.insert(tag);
}

void CategoryPickerState::addTags(std::string_view typed, const Localization& localization) {
    for (const std::string& piece : text::split(typed, ','))
        if (const auto tag = text::trimmedWithNewlines(piece); !tag.empty())
            selectedTags.insert(StoredNames::storedTag(tag, localization));
}

void CategoryPickerState::save() {
    record_->category = selectedCategory;
    record_->setTagList({selectedTags.begin(), selectedTags.end()});
    record_->updatedAt = platform::currentDate();
    if (const auto appName = record_->appName()) remember(*appName);
    dismissed.send();
}

void CategoryPickerState::remember(const std::string& appName) {
    const CategoryTagManager::AppPreferences chosen{.category = selectedCategory,
                                                    .tags = {selectedTags.begin(), selectedTags.end()}};
    manager_.setPreference(appName, chosen);
    console_.line("CategoryPickerView: 已保存 {} 的分类偏好", appName);
    if (auto* context = record_->context())
        manager_.applyPreference(appName, chosen, *context);
    else
        console_.line("CategoryPickerView: 无法获取 ModelContext");
}

}  // namespace quorvane
