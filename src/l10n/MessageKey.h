#pragma once

#include "l10n/MessageTable.h"

#include <algorithm>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>

namespace quorvane {

/// The place of a key in `messageSignatures`; none if there is no such key.
[[nodiscard]] constexpr std::optional<std::size_t> messageIndex(std::string_view name) {
    const auto* found = std::ranges::lower_bound(messageSignatures, name, {}, &MessageSignature::key);
    if (found == std::end(messageSignatures) || found->key != name) return std::nullopt;
    return static_cast<std::size_t>(found - std::begin(messageSignatures));
}

/// The key of a text that takes these values. Made from a literal: a key that doesn't exist, a wrong number of values
/// and a text in the place of a number are errors of compilation.
template <MessageValue... Values>
class MessageKey {
public:
    consteval MessageKey(const char* name) {  // implicit, so that a literal will do where a key is wanted
        const auto index = messageIndex(name);
        if (!index) throw "no text has this key: see resources/l10n/en.json";
        if (!messageSignatures[*index].takes<Values...>()) throw "the values are not the arguments of this text";
        index_ = static_cast<std::uint16_t>(*index);
    }

    [[nodiscard]] constexpr std::string_view name() const { return messageSignatures[index_].key; }
    [[nodiscard]] constexpr std::size_t index() const { return index_; }  ///< in `messageSignatures`
    friend constexpr auto operator<=>(const MessageKey&, const MessageKey&) = default;

private:
    std::uint16_t index_ = 0;
};

/// The key of a text without arguments.
using TextKey = MessageKey<>;

}  // namespace quorvane
