#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

/// Searches with regular expressions that strangers wrote, in ICU's dialect and whatever the case of letters, within a
/// bounded time: some expressions would try until the end of days.
class RegularExpressionSearch {
public:
    /// `effort` (> 0): what all searches of this object together may waste, in units of ICU's time limit, which are
    /// ten thousand steps of its engine or about a tenth of a millisecond.
    explicit RegularExpressionSearch(std::int32_t effort = 300) : effort_(effort) {}

    /// Does the pattern match anywhere in the subject? A pattern that is no expression matches nothing, and neither
    /// does one whose search is given up. A search that is given up takes half of the effort that is left, so that
    /// many of them cost little more than one.
    [[nodiscard]] bool finds(std::string_view pattern, std::string_view subject);

    /// The text of the first match; none if there is none or the search is given up, as above.
    [[nodiscard]] std::optional<std::string> firstMatch(std::string_view pattern, std::string_view subject);

private:
    std::int32_t effort_;
};

}  // namespace quorvane
