#include "tracking/SteadyTitle.h"

#include "base/Text.h"

#include <algorithm>
#include <vector>

namespace quorvane {
namespace {

constexpr std::string_view digits = "0123456789";

/// Marks that programs put beside a word: unsaved changes, unread messages, recording.
constexpr std::string_view marks[] = {"*", "●", "•", "○", "◉", "∙", "·", "✱", "+"};

bool isNumber(std::string_view text, std::string_view others = ".,") {
    const auto isOther = [&](char character) { return others.find(character) != std::string_view::npos; };
    const auto isDigit = [](char character) { return digits.find(character) != std::string_view::npos; };
    return std::ranges::any_of(text, isDigit) &&
           std::ranges::all_of(text, [&](char character) { return isDigit(character) || isOther(character); });
}

/// "(3)", "[1,204]", "{99+}", "(2/10)", also with a full-width pair.
bool isCounter(std::string_view word) {
    constexpr std::string_view pairs[][2] = {{"(", ")"}, {"[", "]"}, {"{", "}"}, {"（", "）"}};
    return std::ranges::any_of(pairs, [&](const auto& pair) {
        if (!word.starts_with(pair[0]) || !word.ends_with(pair[1])) return false;
        auto inner = word.substr(pair[0].size(), word.size() - pair[0].size() - pair[1].size());
        if (inner.ends_with('+') || inner.ends_with('%')) inner.remove_suffix(1);
        return isNumber(inner, ".,/");
    });
}

/// Full-width brackets bring their own space.
std::string spacedOut(std::string_view title) {
    std::string spaced;
    for (; !title.empty(); title.remove_prefix(1)) {
        if (title.starts_with("（")) spaced += ' ';
        spaced += title.front();
        if (spaced.ends_with("）")) spaced += ' ';
    }
    return spaced;
}

/// "12:30", "1:02:03", "-0:45".
bool isClock(std::string_view word) {
    if (word.starts_with('-')) word.remove_prefix(1);
    const auto parts = text::split(word, ':');
    return (parts.size() == 2 || parts.size() == 3) && std::ranges::all_of(parts, [](const std::string& part) {
               return !part.empty() && part.size() <= 2 && part.find_first_not_of(digits) == std::string::npos;
           });
}

bool isPercentage(std::string_view word) {
    return word.ends_with('%') && isNumber(word.substr(0, word.size() - 1));
}

std::string_view withoutMarks(std::string_view word) {
    for (bool goesOn = true; goesOn;) {
        goesOn = false;
        for (const std::string_view mark : marks) {
            if (word.starts_with(mark)) word.remove_prefix(mark.size()), goesOn = true;
            if (word.ends_with(mark) && mark != "+") word.remove_suffix(mark.size()), goesOn = true;
        }
    }
    return word;
}

/// Separators, spinners and marks that stand alone hold no letter, digit or sign that names something.
bool isOrnament(std::string_view word) {
    constexpr std::string_view ascii = "-|/\\*+<>:;.,!~=_#()[]{}";
    if (word.find_first_not_of(ascii) == std::string_view::npos) return true;
    // Arrows, technical and geometric shapes, dingbats, Braille: U+2010-27BF and U+2800-28FF, three bytes each.
    for (; !word.empty(); word.remove_prefix(3)) {
        if (word.size() < 3 || static_cast<unsigned char>(word[0]) != 0xE2) return false;
        const auto second = static_cast<unsigned char>(word[1]);
        if (second < 0x80 || second > 0xA3) return false;
    }
    return true;
}

}  // namespace

std::string steadyTitle(std::string_view title) {
    std::vector<std::string> kept;
    for (const std::string& piece : text::split(spacedOut(title), ' ')) {
        const std::string_view word = withoutMarks(piece);
        if (word == "%" && !kept.empty() && isNumber(kept.back())) kept.pop_back();
        if (!word.empty() && word != "%" && !isOrnament(word) && !isCounter(word) && !isClock(word) &&
            !isPercentage(word))
            kept.emplace_back(word);
    }
    return text::joined(kept, " ");
}

}  // namespace quorvane
