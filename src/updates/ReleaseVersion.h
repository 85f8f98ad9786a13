#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

/// Orders versions by their numbers: "1.10" is after "1.9", "1.2" and "1.2.0" are the same. None if one of them is no
/// list of numbers between points.
[[nodiscard]] std::optional<std::strong_ordering> compareVersions(std::string_view a, std::string_view b);

/// A version of the application, as a feed or the application itself names it.
struct ReleaseVersion {
    std::string shortVersion;  ///< "1.2.0"; decides first
    std::string build = "0";   ///< "345"
    friend bool operator==(const ReleaseVersion&, const ReleaseVersion&) = default;
};

/// "1.2.0 (345)".
[[nodiscard]] std::string describe(const ReleaseVersion& version);

/// None if a number of one of them can't be read.
[[nodiscard]] std::optional<std::strong_ordering> compareReleases(const ReleaseVersion& a, const ReleaseVersion& b);

}  // namespace quorvane
