#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// Category and tags that the user remembered for an application.
struct CategoryPreference {
    std::string category;
    std::vector<std::string> tags;
    friend bool operator==(const CategoryPreference&, const CategoryPreference&) = default;
};

/// Looks up what the user remembered for an application, by its display name. Main thread only.
class CategoryPreferenceSource {
public:
    virtual ~CategoryPreferenceSource() = default;
    [[nodiscard]] virtual std::optional<CategoryPreference> preference(const std::string& appName) = 0;
};

}  // namespace quorvane
