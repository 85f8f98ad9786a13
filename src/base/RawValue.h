#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace quorvane {

/// The stored text of each case of an enumeration, in the order of its cases.
template <class Enumeration, std::size_t count>
using RawValueTable = std::array<std::pair<Enumeration, std::string_view>, count>;

/// Specialised beside each stored enumeration with a `table`.
template <class Enumeration>
struct RawValues;

template <class Enumeration>
[[nodiscard]] constexpr std::string_view rawValue(Enumeration value) {
    for (const auto& [candidate, text] : RawValues<Enumeration>::table)
        if (candidate == value) return text;
    return {};
}

/// The case with this stored text, letter for letter; none for any other text.
template <class Enumeration>
[[nodiscard]] constexpr std::optional<Enumeration> fromRawValue(std::string_view text) {
    for (const auto& [value, candidate] : RawValues<Enumeration>::table)
        if (candidate == text) return value;
    return std::nullopt;
}

}  // namespace quorvane
