#pragma once

#include "base/Signal.h"
#include "l10n/Localization.h"
#include "rules/CategoryTagManager.h"

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

/// The categories and tags that are remembered for applications, and the user's own categories. Each change is kept at
/// once; records that are there already stay as they are. What it is made on outlives it. Main thread only.
class AppCategoryManagementView {
public:
    /// Takes what is stored.
    AppCategoryManagementView(CategoryTagManager& manager, const Localization& localization);

    [[nodiscard]] const CategoryTagManager::AppPreferencesMap& appPreferences() const { return appPreferences_; }
    [[nodiscard]] const std::vector<std::string>& customCategories() const { return customCategories_; }

    /// An application in the list.
    struct Row {
        std::string appName;
        std::optional<std::string> category;
        std::vector<std::string> tags;
        friend bool operator==(const Row&, const Row&) = default;
    };
    std::string searchText;
    /// By name, whatever the case; those whose name contains the search text.
    [[nodiscard]] std::vector<Row> rows() const;
    void remove(const std::string& appName);

    /// A new application is asked for, or the one of that name is changed; what is asked for is below.
    void beginAdding();
    void beginEditing(const std::string& appName);
    void cancel() { showingAddApp_ = false; }
    [[nodiscard]] bool showingAddApp() const { return showingAddApp_; }

    std::string newAppName;
    std::optional<std::string> newAppCategory;
    std::set<std::string> newAppTags;
    std::string customTag;  ///< typed, perhaps several between commas

    /// Categories: the built-in ones, the user's own, and the chosen one if it has been removed since.
    [[nodiscard]] std::vector<std::string> offeredCategories() const;
    /// Tags: the common ones in their order, then the others that are chosen.
    [[nodiscard]] std::vector<std::string> offeredTags() const;
    void toggleTag(const std::string& tag);
    /// Chooses what was typed; a comma can be in no tag.
    void addCustomTag();
    /// Has the application a name?
    [[nodiscard]] bool canSave() const;
    /// Keeps what was asked for, a typed tag included, in place of what was remembered under that name; false, with no
    /// effect, without a name. An application that got another name has no longer the old one.
    bool save();

    std::string newCategoryName;
    void addCategory();  ///< and empties the name
    /// Applications and records keep the removed name.
    void removeCategory(const std::string& category);

    Signal<> changed;  ///< after the lists have changed

private:
    void reload();
    void store(const CategoryTagManager::AppPreferencesMap& preferences);

    CategoryTagManager& manager_;
    const Localization& localization_;
    CategoryTagManager::AppPreferencesMap appPreferences_;
    std::vector<std::string> customCategories_;
    bool showingAddApp_ = false;
    std::optional<std::string> editedName_;
};

}  // namespace quorvane
