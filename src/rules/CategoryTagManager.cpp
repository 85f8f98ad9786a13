#include "rules/CategoryTagManager.h"

#include "base/Json.h"
#include "base/Text.h"
#include "platform/Clock.h"
#include "store/ActivityRecord.h"
#include "store/StoreError.h"
#include "store/StoredNames.h"

#include <algorithm>
#include <span>

namespace quorvane {
namespace {

constexpr std::string_view customCategoriesKey = "CustomActivityCategories";
constexpr std::string_view appPreferencesKey = "AppCategoryPreferences";

using Texts = std::vector<std::string>;

std::optional<Texts> textsOf(const Json& value) {
    const auto isText = [](const Json& item) { return item.is_string(); };
    if (!value.is_array() || !std::all_of(value.begin(), value.end(), isText)) return std::nullopt;
    return value.get<Texts>();
}

std::optional<CategoryTagManager::AppPreferences> preferencesOf(const Json& value) {
    if (!value.is_object() || !value.contains("tags")) return std::nullopt;
    auto tags = textsOf(value["tags"]);
    if (!tags) return std::nullopt;
    CategoryTagManager::AppPreferences preferences{.tags = std::move(*tags)};
    if (const auto category = value.find("category"); category != value.end() && !category->is_null()) {
        if (!category->is_string()) return std::nullopt;
        preferences.category = category->get<std::string>();
    }
    return preferences;
}

/// How many records are in memory at once: an application may have a million of them.
constexpr std::size_t sliceSize = 10'000;

std::vector<std::int64_t> rowsOf(const std::string& appName, ModelContext& context) {
    std::vector<std::int64_t> rows;
    context.scan<ActivityRecord>({.predicate = field(&ActivityRecord::appName) == appName}, {"pk"},
                                 [&](const Row& row) {
                                     rows.push_back(row.integer(0));
                                     return true;
                                 });
    return rows;
}

void applyTo(std::span<const std::int64_t> rows, const CategoryTagManager::AppPreferences& preferences, Date now,
             ModelContext& context) {
    for (const std::int64_t row : rows) {
        const auto object = context.object(ActivityRecord::description(), row);
        if (!object) continue;
        auto& record = static_cast<ActivityRecord&>(*object);
        record.category = preferences.category;
        record.setTagList(preferences.tags);
        record.updatedAt = now;
    }
    context.save();
}

}  // namespace

CategoryTagManager::CategoryTagManager(platform::UserDefaults& defaults, ConsoleSink& console)
    : defaults_(defaults), console_(console) {}

Texts CategoryTagManager::customCategories() const {
    const auto stored = defaults_.value(customCategoriesKey);
    return stored ? textsOf(Json::parse(*stored, nullptr, false)).value_or(Texts()) : Texts();
}

void CategoryTagManager::addCustomCategory(std::string_view name) {
    auto category = text::trimmedWithNewlines(name);
    auto categories = customCategories();
    if (category.empty() || std::find(categories.begin(), categories.end(), category) != categories.end()) return;
    categories.push_back(std::move(category));
    std::sort(categories.begin(), categories.end());
    defaults_.setValue(customCategoriesKey, jsonText(categories));
}

void CategoryTagManager::removeCustomCategory(std::string_view name) {
    auto categories = customCategories();
    std::erase(categories, name);
    defaults_.setValue(customCategoriesKey, jsonText(categories));
}

Texts CategoryTagManager::allCategories() const {
    Texts all;
    for (const StoredNames::Name& category : StoredNames::categories)
        all.emplace_back(category.stored);
    for (std::string& name : customCategories())
        all.push_back(std::move(name));
    return all;
}

CategoryTagManager::AppPreferencesMap CategoryTagManager::loadAppPreferences() const {
    const auto stored = defaults_.value(appPreferencesKey);
    const Json json = stored ? Json::parse(*stored, nullptr, false) : Json();
    AppPreferencesMap map;
    if (!json.is_object()) return map;
    for (const auto& [appName, value] : json.items()) {
        auto preferences = preferencesOf(value);
        if (!preferences) return {};
        map.insert_or_assign(appName, std::move(*preferences));
    }
    return map;
}

void CategoryTagManager::saveAppPreferences(const AppPreferencesMap& preferences) {
    Json json = Json::object();
    for (const auto& [appName, chosen] : preferences) {
        Json value = Json::object();
        if (chosen.category) value["category"] = *chosen.category;
        value["tags"] = chosen.tags;
        json[appName] = std::move(value);
    }
    defaults_.setValue(appPreferencesKey, jsonText(json));
}

std::optional<CategoryTagManager::AppPreferences> CategoryTagManager::preference(std::string_view appName) const {
    const auto map = loadAppPreferences();
    const auto found = map.find(appName);
    return found == map.end() ? std::nullopt : std::optional(found->second);
}

void CategoryTagManager::setPreference(const std::string& appName, const AppPreferences& preferences) {
    auto map = loadAppPreferences();
    map.insert_or_assign(appName, preferences);
    saveAppPreferences(map);
}

void CategoryTagManager::applyPreference(const std::string& appName, const AppPreferences& preferences,
                                         ModelContext& context) {
    try {
        context.save();  // the rows are read from the store
        const auto rows = rowsOf(appName, context);
        const Date now = platform::currentDate();
        for (std::size_t begin = 0; begin < rows.size(); begin += sliceSize) {
            const auto slice = std::span(rows).subspan(begin, std::min(sliceSize, rows.size() - begin));
            applyTo(slice, preferences, now, context);
        }
        console_.line("CategoryTagManager: 已更新 {} 条 {} 的记录", rows.size(), appName);
    } catch (const StoreError& error) {
        console_.line("CategoryTagManager: 更新记录失败: {}", error.what());
    }
}

}  // namespace quorvane
