#include "base/RegularExpressionSearch.h"

#include <algorithm>
#include <unicode/regex.h>

namespace quorvane {
namespace {

icu::UnicodeString fromUtf8(std::string_view text) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
}

}  // namespace

bool RegularExpressionSearch::finds(std::string_view pattern, std::string_view subject) {
    return firstMatch(pattern, subject).has_value();
}

std::optional<std::string> RegularExpressionSearch::firstMatch(std::string_view pattern, std::string_view subject) {
    const auto text = fromUtf8(subject);  // the matcher keeps a reference
    UErrorCode error = U_ZERO_ERROR;
    icu::RegexMatcher matcher(fromUtf8(pattern), text, UREGEX_CASE_INSENSITIVE, error);
    const std::int32_t limit = std::max(effort_ / 2, 1);
    matcher.setTimeLimit(limit, error);
    if (U_FAILURE(error)) return std::nullopt;
    const bool isFound = matcher.find(error);
    if (error == U_REGEX_TIME_OUT) effort_ = std::max(effort_ - limit, 1);
    if (!isFound || U_FAILURE(error)) return std::nullopt;
    std::string match;
    matcher.group(error).toUTF8String(match);
    return match;
}

}  // namespace quorvane
