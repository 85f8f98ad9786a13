#include "base/TerminalText.h"

#include "base/Text.h"

#include <algorithm>
#include <initializer_list>

namespace quorvane {
namespace {

bool startsWithAny(std::string_view text, std::initializer_list<std::string_view> beginnings) {
    return std::any_of(beginnings.begin(), beginnings.end(), [&](auto one) { return text.starts_with(one); });
}

/// How many bytes at the front turn the direction of writing: U+200E, U+200F, U+202A to U+202E, U+2066 to U+2069.
std::size_t directionMark(std::string_view text) {
    return startsWithAny(text, {"\u200E", "\u200F", "\u202A", "\u202B", "\u202C", "\u202D", "\u202E", "\u2066",
                                "\u2067", "\u2068", "\u2069"})
               ? 3
               : 0;
}

/// How many bytes at the front are a control character or a line end.
std::size_t control(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    if (first < 0x20 || first == 0x7F) return 1;
    if (first == 0xC2 && text.size() > 1 && static_cast<unsigned char>(text[1]) < 0xA0) return 2;  // U+0080 to U+009F
    return startsWithAny(text, {"\u2028", "\u2029"}) ? 3 : 0;
}

}  // namespace

std::string harmlessLine(std::string_view text) {
    const std::string valid = text::validUtf8(text);
    std::string out;
    for (std::string_view rest = valid; !rest.empty();) {
        if (const std::size_t mark = directionMark(rest)) {
            rest.remove_prefix(mark);
        } else if (const std::size_t length = control(rest)) {
            out += ' ';
            rest.remove_prefix(length);
        } else {
            out += rest.front();
            rest.remove_prefix(1);
        }
    }
    return out;
}

}  // namespace quorvane
