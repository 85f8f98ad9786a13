#include "updates/ReleaseVersion.h"

#include "base/Text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <fmt/format.h>
#include <vector>

namespace quorvane {
namespace {

/// The numbers between points, without zeros at the end; none if there is anything else.
std::optional<std::vector<std::uint64_t>> numbersOf(std::string_view version) {
    std::vector<std::uint64_t> numbers;
    for (const std::string& piece : text::split(version, '.')) {
        auto& number = numbers.emplace_back(0);
        const char* const last = piece.data() + piece.size();
        const auto [end, error] = std::from_chars(piece.data(), last, number);
        if (error != std::errc{} || end != last) return std::nullopt;
    }
    while (!numbers.empty() && numbers.back() == 0)
        numbers.pop_back();
    return numbers;
}

}  // namespace

std::optional<std::strong_ordering> compareVersions(std::string_view a, std::string_view b) {
    const auto first = numbersOf(a);
    const auto second = numbersOf(b);
    if (!first || !second) return std::nullopt;
    return std::lexicographical_compare_three_way(first->begin(), first->end(), second->begin(), second->end());
}

std::string describe(const ReleaseVersion& version) {
    return fmt::format("{} ({})", version.shortVersion, version.build);
}

std::optional<std::strong_ordering> compareReleases(const ReleaseVersion& a, const ReleaseVersion& b) {
    const auto byVersion = compareVersions(a.shortVersion, b.shortVersion);
    const auto byBuild = compareVersions(a.build, b.build);
    if (!byVersion || !byBuild) return std::nullopt;
    return *byVersion != 0 ? byVersion : byBuild;
}

}  // namespace quorvane
