#pragma once

#include "diagnostics/ConsoleSink.h"
#include "platform/UserDefaults.h"
#include "store/ModelContext.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

/// Categories of the user's own, and the category and tags that the user chose for an application. Both are kept in the
/// user defaults, read and written at each call. Main thread only.
class CategoryTagManager {
public:
    /// What is remembered for an application.
    struct AppPreferences {
        std::optional<std::string> category;
        std::vector<std::string> tags;
        friend bool operator==(const AppPreferences&, const AppPreferences&) = default;
    };
    using AppPreferencesMap = std::map<std::string, AppPreferences, std::less<>>;  ///< by display name

    CategoryTagManager(platform::UserDefaults& defaults, ConsoleSink& console);

    /// The user's own categories, sorted.
    [[nodiscard]] std::vector<std::string> customCategories() const;
    /// Adds the name without blanks around it, unless it is empty or among the user's own already.
    void addCustomCategory(std::string_view name);
    /// Records keep the removed name.
    void removeCustomCategory(std::string_view name);
    /// The built-in categories in their order, then the user's own.
    [[nodiscard]] std::vector<std::string> allCategories() const;

    /// Empty if nothing is stored, or if what is stored can't be read.
    [[nodiscard]] AppPreferencesMap loadAppPreferences() const;
    void saveAppPreferences(const AppPreferencesMap& preferences);
    /// By the exact display name.
    [[nodiscard]] std::optional<AppPreferences> preference(std::string_view appName) const;
    void setPreference(const std::string& appName, const AppPreferences& preferences);

    /// Gives all records of the application this category and these tags, past ones included, and saves. Their `source`
    /// and `confidence` stay. Nothing throws: a failure is printed.
    void applyPreference(const std::string& appName, const AppPreferences& preferences, ModelContext& context);

private:
    platform::UserDefaults& defaults_;
    ConsoleSink& console_;
};

}  // namespace quorvane
