#include "shell/state/AppCategoryManagementView.h"

#include "base/Text.h"
#include "store/StoredNames.h"

#include <algorithm>
#include <utility>

namespace quorvane {

AppCategoryManagementView::AppCategoryManagementView(CategoryTagManager& manager, const Localization& localization)
    : manager_(manager), localization_(localization) {
    reload();
}

void AppCategoryManagementView::reload() {
    appPreferences_ = manager_.loadAppPreferences();
    customCategories_ = manager_.customCategories();
}

void AppCategoryManagementView::store(const CategoryTagManager::AppPreferencesMap& preferences) {
    manager_.saveAppPreferences(preferences);
    reload();
    changed.send();
}

std::vector<AppCategoryManagementView::Row> AppCategoryManagementView::rows() const {
    const std::string wanted = text::trimmed(searchText);
    std::vector<std::pair<std::string, Row>> found;
    found.reserve(appPreferences_.size());
    for (const auto& [name, preferences] : appPreferences_)
        if (wanted.empty() || text::containsFolded(name, wanted))
            found.emplace_back(text::folded(name), Row{name, preferences.category, preferences.tags});
    std::ranges::stable_sort(found, {}, &std::pair<std::string, Row>::first);
    std::vector<Row> sorted;
    sorted.reserve(found.size());
    for (auto& [key, row] : found)
        sorted.push_back(std::move(row));
    return sorted;
}

void AppCategoryManagementView::remove(const std::string& appName) {
    auto preferences = manager_.loadAppPreferences();
    preferences.erase(appName);
    store(preferences);
}

void AppCategoryManagementView::beginAdding() {
    showingAddApp_ = true;
    editedName_.reset();
    newAppName.clear();
    newAppCategory.reset();
    newAppTags.clear();
    customTag.clear();
}

void AppCategoryManagementView::beginEditing(const std::string& appName) {
    beginAdding();
    const auto remembered = manager_.preference(appName);
    if (!remembered) return;
    editedName_ = appName;
    newAppName = appName;
    newAppCategory = remembered->category;
    newAppTags = {remembered->tags.begin(), remembered->tags.end()};
}

std::vector<std::string> AppCategoryManagementView::offeredCategories() const {
    auto offered = manager_.allCategories();
    if (newAppCategory && std::ranges::find(offered, *newAppCategory) == offered.end())
        offered.push_back(*newAppCategory);
    return offered;
}

std::vector<std::string> AppCategoryManagementView::offeredTags() const {
    std::vector<std::string> offered;
    for (const StoredNames::Name& tag : StoredNames::tags)
        offered.emplace_back(tag.stored);
    for (const std::string& tag : newAppTags)
        if (std::ranges::find(offered, tag) == offered.end()) offered.push_back(tag);
    return offered;
}

void AppCategoryManagementView::toggleTag(const std::string& tag) {
    if (newAppTags.erase(tag) == 0) newAppTags.insert(tag);
}

void AppCategoryManagementView::addCustomTag() {
    for (const std::string& piece : text::split(customTag, ','))
        if (const auto tag = text::trimmedWithNewlines(piece); !tag.empty())
            newAppTags.insert(StoredNames::storedTag(tag, localization_));
    customTag.clear();
}

bool AppCategoryManagementView::canSave() const {
    return !text::trimmedWithNewlines(newAppName).empty();
}

bool AppCategoryManagementView::save() {
    if (!canSave()) return false;
    addCustomTag();
    auto preferences = manager_.loadAppPreferences();
    if (editedName_) preferences.erase(*editedName_);
    preferences[text::trimmedWithNewlines(newAppName)] = {newAppCategory, {newAppTags.begin(), newAppTags.end()}};
    showingAddApp_ = false;
    store(preferences);
    return true;
}

void AppCategoryManagementView::addCategory() {
    // Nobody could tell a twin of a built-in one from it.
    const std::string name = text::trimmedWithNewlines(newCategoryName);
    if (StoredNames::storedCategory(name, localization_) == name) manager_.addCustomCategory(name);
    newCategoryName.clear();
    reload();
    changed.send();
}

void AppCategoryManagementView::removeCategory(const std::string& category) {
    manager_.removeCustomCategory(category);
    reload();
    changed.send();
}

}  // namespace quorvane
