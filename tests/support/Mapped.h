#pragma once

#include <functional>
#include <iterator>
#include <type_traits>
#include <vector>

namespace quorvane {

/// What a member, a method or a function says of each: `mapped(view.rows(), &RuleRow::name)`.
template <class Range, class Projection>
[[nodiscard]] auto mapped(const Range& range, const Projection& projection) {
    std::vector<std::decay_t<decltype(std::invoke(projection, *std::begin(range)))>> found;
    for (const auto& each : range)
        found.push_back(std::invoke(projection, each));
    return found;
}

}  // namespace quorvane
