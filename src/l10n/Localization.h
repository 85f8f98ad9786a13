#pragma once

#include "l10n/MessageKey.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

namespace quorvane {

/// The texts that people see, in one language.
///
/// Texts come from the catalogues in resources/l10n. Those with arguments are messages of ICU and follow its rules for
/// apostrophes and braces; those without stand as they are. Values go in as they are: nothing in them is read as a
/// message, and bytes that are no UTF-8 become U+FFFD. Numbers are written as the language of the words writes them,
/// with digits in groups ("1,234") and at most three decimals; whoever wants another form inserts a text.
///
/// One thread at a time: messages are parsed when they are first asked for. A worker makes a `Localization` of its own.
class Localization {
public:
    /// By a tag such as "zh", "zh-Hans" or "zh_CN.UTF-8". A language without a catalogue gets English.
    explicit Localization(std::string_view language);

    /// The language that the user wants for words. `LANGUAGE`, a list separated by colons, decides: the first entry
    /// with a catalogue, English if there is none. Where it is empty, the first of `LC_ALL`, `LC_MESSAGES` and `LANG`
    /// that isn't decides.
    [[nodiscard]] static Localization fromEnvironment();

    Localization(Localization&&) noexcept;
    Localization& operator=(Localization&&) noexcept;
    ~Localization();

    /// "en" or "zh".
    [[nodiscard]] std::string_view language() const;

    /// The text of a key, with the values in place of {0}, {1} and so on.
    template <MessageValue... Values>
    [[nodiscard]] std::string text(MessageKey<std::type_identity_t<Values>...> key, const Values&... values) const {
        return formatted(key.index(), std::array<Argument, sizeof...(Values)>{argument(values)...});
    }

private:
    using Argument = std::variant<std::string_view, std::int64_t, double>;
    struct Impl;

    template <MessageValue Value>
    static Argument argument(const Value& value) {
        if constexpr (std::is_floating_point_v<Value>) {
            return static_cast<double>(value);
        } else if constexpr (MessageNumber<Value>) {
            return static_cast<std::int64_t>(value);
        } else {
            return std::string_view(value);
        }
    }

    [[nodiscard]] std::string formatted(std::size_t index, std::span<const Argument> arguments) const;

    std::unique_ptr<Impl> impl_;
};

}  // namespace quorvane
