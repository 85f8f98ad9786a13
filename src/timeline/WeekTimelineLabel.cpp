#include "timeline/WeekTimelineLabel.h"

#include <algorithm>
#include <memory>
#include <unicode/brkiter.h>
#include <unicode/unistr.h>
#include <vector>

namespace quorvane {
namespace {

constexpr double narrowestWithLabel = 18;

bool isWideCharacter(UChar32 character) {
    return (character >= 0x3040 && character <= 0x30FF) || (character >= 0x4E00 && character <= 0x9FFF) ||
           (character >= 0x3400 && character <= 0x4DBF) || (character >= 0xAC00 && character <= 0xD7AF);
}

/// Where the characters that people see begin, and the end of the last one.
std::vector<std::int32_t> boundaries(const icu::UnicodeString& text) {
    UErrorCode error = U_ZERO_ERROR;
    static const std::unique_ptr<icu::BreakIterator> prototype(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), error));
    const std::unique_ptr<icu::BreakIterator> iterator(prototype->clone());
    iterator->setText(text);
    std::vector<std::int32_t> found;
    for (std::int32_t at = iterator->first(); at != icu::BreakIterator::DONE; at = iterator->next())
        found.push_back(at);
    return found;
}

/// Half of a short text in characters of full width makes it a wide one.
bool isWideText(const icu::UnicodeString& text, const std::vector<std::int32_t>& starts) {
    const std::size_t count = starts.size() - 1;
    std::size_t wide = 0;
    for (std::size_t i = 0; i < count; ++i)
        wide += isWideCharacter(text.char32At(starts[i])) ? 1 : 0;
    return count <= 1 ? wide > 0 : wide >= count / 2;
}

std::size_t limit(double width, bool isWide) {
    if (width < 24) return isWide ? 2 : 4;
    if (width < 36) return isWide ? 3 : 6;
    if (width < 52) return isWide ? 4 : 8;
    return isWide ? 5 : 11;
}

std::string cutTo(double width, std::string_view name) {
    const auto text =
        icu::UnicodeString::fromUTF8(icu::StringPiece(name.data(), static_cast<std::int32_t>(name.size())));
    const auto starts = boundaries(text);
    const std::size_t most = limit(width, isWideText(text, starts));
    std::string cut;
    if (starts.size() - 1 <= most) return text.toUTF8String(cut);
    return text.tempSubString(0, starts[most - 1]).toUTF8String(cut) + "…";
}

}  // namespace

double WeekTimelineLabel::capsuleHeight() const {
    return std::clamp(height, 10.0, 14.0);
}

std::optional<WeekTimelineLabel> weekTimelineLabel(std::string_view name, double width, double height) {
    if (width < narrowestWithLabel) return std::nullopt;
    return WeekTimelineLabel{.text = cutTo(width, name), .width = width, .height = height};
}

}  // namespace quorvane
