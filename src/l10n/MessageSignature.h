#pragma once

#include <concepts>
#include <cstddef>
#include <string_view>

namespace quorvane {

/// What can stand in a text: numbers, and texts in UTF-8.
template <class Value>
concept MessageNumber = std::floating_point<Value> ||
    (std::integral<Value> && !std::same_as<Value, bool> && !std::same_as<Value, char>);
template <class Value>
concept MessageValue = MessageNumber<Value> || std::convertible_to<const Value&, std::string_view>;

/// A key and what its text takes.
struct MessageSignature {
    std::string_view key;
    /// A letter for each argument: 'v' any value, 'n' a number (plural, number), 'w' a word (select).
    std::string_view arguments;

    /// Do these values, in their order, fit the arguments?
    template <MessageValue... Values>
    [[nodiscard]] constexpr bool takes() const {
        constexpr bool isNumber[] = {MessageNumber<Values>..., false};  // no array is empty
        if (arguments.size() != sizeof...(Values)) return false;
        for (std::size_t i = 0; i < arguments.size(); ++i)
            if (arguments[i] != 'v' && (arguments[i] == 'n') != isNumber[i]) return false;
        return true;
    }
};

}  // namespace quorvane
