#pragma once

#include "base/Signal.h"
#include "l10n/Localization.h"
#include "rules/CategoryTagManager.h"
#include "store/ActivityRecord.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace quorvane {

/// The categories that suit an application by its name, in a fixed order; one may stand there twice. The words are
/// looked for anywhere in the name: "edge" suggests for "Knowledge" as well.
[[nodiscard]] std::vector<ActivityCategory> suggestedCategories(std::string_view appName);

/// The choice of category and tags for one record, which is remembered for its application and given to all of the
/// application's records. The manager and the console outlive it. Main thread only.
class CategoryPickerState {
public:
    /// Begins with what the record has; where it has no category, with what is remembered for its application.
    CategoryPickerState(std::shared_ptr<ActivityRecord> record, CategoryTagManager& manager, ConsoleSink& console);

    std::optional<std::string> selectedCategory;
    std::set<std::string> selectedTags;

    [[nodiscard]] std::vector<ActivityCategory> suggestions() const;
    void toggleTag(const std::string& tag);
    /// Selects the tags that were typed, separated by commas: a comma can be in no tag.
    void addTags(std::string_view typed, const Localization& localization);

    /// Writes the choice to the record, remembers it, applies it to the application's records, and dismisses.
    void save();

    Signal<> dismissed;

private:
    void remember(const std::string& appName);

    std::shared_ptr<ActivityRecord> record_;
    CategoryTagManager& manager_;
    ConsoleSink& console_;
};

}  // namespace quorvane
