#include "diagnostics/performance/PerformanceReportRedaction.h"

#include "base/Text.h"

#include <fmt/format.h>
#include <memory>
#include <new>
#include <stdexcept>
#include <unicode/regex.h>

namespace quorvane::PerformanceReportRedaction {
namespace {

std::string replacedAll(std::string_view text, std::string_view part, std::string_view replacement) {
    std::string out;
    std::size_t kept = 0;
    for (auto found = text.find(part); found != std::string_view::npos; found = text.find(part, kept)) {
        out.append(text, kept, found - kept);
        out += replacement;
        kept = found + part.size();
    }
    return out.append(text, kept);
}

void replaceMatches(icu::UnicodeString& text, const char* expression, const char* replacement) {
    UErrorCode error = U_ZERO_ERROR;
    icu::RegexMatcher matcher(icu::UnicodeString::fromUTF8(expression), text, 0, error);
    if (U_FAILURE(error)) throw std::logic_error("invalid expression");
    auto replaced = matcher.replaceAll(icu::UnicodeString::fromUTF8(replacement), error);
    if (U_FAILURE(error)) throw std::bad_alloc();
    text = std::move(replaced);
}

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

}  // namespace

std::string redact(std::string_view stacks, std::string_view homeDirectory) {
    if (homeDirectory.ends_with('/')) homeDirectory.remove_suffix(1);
    const bool hasHome = !homeDirectory.empty() && homeDirectory != "/";
    auto text = icu::UnicodeString::fromUTF8(hasHome ? replacedAll(stacks, homeDirectory, "~") : std::string(stacks));
    replaceMatches(text, R"((/Users|/home)/[^/\s]+)", "$1/_");
    // The home of root has no name in it, and must not be the beginning of another folder's.
    replaceMatches(text, R"((?<![\p{L}\p{M}\p{N}_.-])/root(?![\p{L}\p{M}\p{N}_.-]))", "/home/_");
    std::string out;
    return text.toUTF8String(out);
}

std::string truncate(std::string_view text, std::size_t limit) {
    if (text.size() <= limit) return std::string(text);
    const auto marker = fmt::format("\n\n[truncated by Quorvane: {} bytes total]\n", text.size());
    std::size_t kept = limit > marker.size() ? limit - marker.size() : 0;
    while (kept > 0 && isContinuation(text[kept]))
        --kept;
    return text::validUtf8(text.substr(0, kept)) + marker;
}

}  // namespace quorvane::PerformanceReportRedaction
