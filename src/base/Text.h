#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Operations on UTF-8 text. Bytes that are no UTF-8 read as U+FFFD.
namespace quorvane::text {

/// Lower case by Unicode's full mapping, independent of the locale.
[[nodiscard]] std::string lowercased(std::string_view text);

/// The form in which case and diacritics no longer tell texts apart: canonically decomposed, nonspacing marks left out,
/// case folded.
[[nodiscard]] std::string folded(std::string_view text);

/// Equality whatever the case of letters; a letter and its decomposed form are the same.
[[nodiscard]] bool equalsIgnoringCase(std::string_view a, std::string_view b);

/// Search whatever case and diacritics. An empty `part` is contained nowhere.
[[nodiscard]] bool containsFolded(std::string_view whole, std::string_view part);

/// Without blanks at both ends: spaces of all kinds and tabs, but not line ends.
[[nodiscard]] std::string trimmed(std::string_view text);

/// Without blanks and line ends at both ends.
[[nodiscard]] std::string trimmedWithNewlines(std::string_view text);

/// Unicode general categories L* and M*, Nd.
[[nodiscard]] bool isLetter(char32_t character);
[[nodiscard]] bool isDigit(char32_t character);

/// The pieces between separators; n separators make n + 1 pieces, empty ones included.
[[nodiscard]] std::vector<std::string> split(std::string_view text, char separator);
[[nodiscard]] std::string joined(const std::vector<std::string>& pieces, std::string_view separator);

/// Columns that a terminal gives the text: wide East Asian characters and emoji two, combining and control none.
[[nodiscard]] int displayWidth(std::string_view text);

/// At most `width` columns of the text; when something had to go, the last column is "…".
[[nodiscard]] std::string fittedTo(std::string_view text, int width);

/// The same text with what is no UTF-8 replaced by U+FFFD: one for each byte, or for a character that is cut off.
[[nodiscard]] std::string validUtf8(std::string_view text);

/// A number as lines of the services show it: the shortest digits that read back as the same double, with at least
/// one after the point ("20.0", "0.1").
[[nodiscard]] std::string shortest(double number);

}  // namespace quorvane::text
