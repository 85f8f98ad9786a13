#include "base/Text.h"

#include <fmt/format.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/normlzr.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

namespace quorvane::text {
namespace {

icu::UnicodeString fromUtf8(std::string_view text) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
}

std::string toUtf8(const icu::UnicodeString& text) {
    std::string out;
    text.toUTF8String(out);
    return out;
}

bool isAscii(std::string_view text) {
    for (const char c : text)
        if (static_cast<unsigned char>(c) >= 0x80) return false;
    return true;
}

std::string asciiLowercased(std::string_view text) {
    std::string out(text);
    for (char& c : out)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return out;
}

/// Calls `visit(codePoint, firstByte, endByte)` for each character until it returns false.
template <class Visit>
void forEachCharacter(std::string_view text, Visit visit) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto size = static_cast<std::int32_t>(text.size());
    for (std::int32_t at = 0; at < size;) {
        const std::int32_t first = at;
        UChar32 character = 0;
        U8_NEXT_OR_FFFD(bytes, at, size, character);
        if (!visit(character, static_cast<std::size_t>(first), static_cast<std::size_t>(at))) return;
    }
}

bool isBlank(UChar32 character) {
    return character == '\t' || u_charType(character) == U_SPACE_SEPARATOR;
}

bool isBlankOrNewline(UChar32 character) {
    return isBlank(character) || (character >= 0x0A && character <= 0x0D) || character == 0x85 || character == 0x2028 ||
           character == 0x2029;
}

template <class IsSpace>
std::string trimmedOf(std::string_view text, IsSpace isSpace) {
    std::size_t begin = text.size();
    std::size_t end = 0;
    forEachCharacter(text, [&](UChar32 character, std::size_t first, std::size_t after) {
        if (!isSpace(character)) {
            begin = std::min(begin, first);
            end = after;
        }
        return true;
    });
    return begin < end ? std::string(text.substr(begin, end - begin)) : std::string();
}

int columns(UChar32 character) {
    const auto type = u_charType(character);
    if (type == U_NON_SPACING_MARK || type == U_ENCLOSING_MARK || type == U_FORMAT_CHAR || type == U_CONTROL_CHAR)
        return 0;
    const auto syllable = u_getIntPropertyValue(character, UCHAR_HANGUL_SYLLABLE_TYPE);
    if (syllable == U_HST_VOWEL_JAMO || syllable == U_HST_TRAILING_JAMO) return 0;  // drawn into the letter before
    const auto width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

}  // namespace

std::string lowercased(std::string_view text) {
    if (isAscii(text)) return asciiLowercased(text);
    return toUtf8(fromUtf8(text).toLower(icu::Locale::getRoot()));
}

std::string folded(std::string_view text) {
    if (isAscii(text)) return asciiLowercased(text);
    UErrorCode error = U_ZERO_ERROR;
    const auto* decomposition = icu::Normalizer2::getNFDInstance(error);
    const icu::UnicodeString decomposed = decomposition->normalize(fromUtf8(text), error);
    if (U_FAILURE(error)) return std::string(text);
    // Marks go before case does: the iota below a Greek letter folds to a letter of its own.
    icu::UnicodeString bare;
    for (std::int32_t at = 0; at < decomposed.length(); at = decomposed.moveIndex32(at, 1)) {
        const UChar32 character = decomposed.char32At(at);
        if (u_charType(character) != U_NON_SPACING_MARK) bare.append(character);
    }
    return toUtf8(bare.foldCase());
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    if (isAscii(a) && isAscii(b)) return asciiLowercased(a) == asciiLowercased(b);
    UErrorCode error = U_ZERO_ERROR;
    return icu::Normalizer::compare(fromUtf8(a), fromUtf8(b), U_COMPARE_IGNORE_CASE, error) == 0;
}

bool containsFolded(std::string_view whole, std::string_view part) {
    return !part.empty() && folded(whole).find(folded(part)) != std::string::npos;
}

std::string trimmed(std::string_view text) {
    return trimmedOf(text, isBlank);
}

std::string trimmedWithNewlines(std::string_view text) {
    return trimmedOf(text, isBlankOrNewline);
}

bool isLetter(char32_t character) {
    const auto mask = U_GET_GC_MASK(static_cast<UChar32>(character));
    return (mask & (U_GC_L_MASK | U_GC_M_MASK)) != 0;
}

bool isDigit(char32_t character) {
    return u_charType(static_cast<UChar32>(character)) == U_DECIMAL_DIGIT_NUMBER;
}

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    for (;;) {
        const auto at = text.find(separator);
        pieces.emplace_back(text.substr(0, at));
        if (at == std::string_view::npos) return pieces;
        text.remove_prefix(at + 1);
    }
}

std::string joined(const std::vector<std::string>& pieces, std::string_view separator) {
    return fmt::format("{}", fmt::join(pieces, separator));
}

int displayWidth(std::string_view text) {
    int width = 0;
    forEachCharacter(text, [&](UChar32 character, std::size_t, std::size_t) {
        width += columns(character);
        return true;
    });
    return width;
}

std::string fittedTo(std::string_view text, int width) {
    if (displayWidth(text) <= width) return std::string(text);
    if (width < 1) return {};
    int used = 0;
    std::size_t end = 0;
    forEachCharacter(text, [&](UChar32 character, std::size_t, std::size_t after) {
        used += columns(character);
        if (used > width - 1) return false;
        end = after;
        return true;
    });
    return std::string(text.substr(0, end)) + "…";
}

std::string validUtf8(std::string_view text) {
    return isAscii(text) ? std::string(text) : toUtf8(fromUtf8(text));
}

std::string shortest(double number) {
    std::string out = fmt::format("{}", number);
    if (out.find_first_not_of("-0123456789") == std::string::npos) out += ".0";
    return out;
}

}  // namespace quorvane::text
