#include "diagnostics/LogPrivacySanitizer.h"

#include <cstdlib>
#include <memory>
#include <new>
#include <stdexcept>
#include <unicode/regex.h>
#include <unicode/utext.h>

namespace quorvane::LogPrivacySanitizer {
namespace {

using Pattern = std::unique_ptr<const icu::RegexPattern>;

Pattern compiled(const std::string& expression) {
    UErrorCode error = U_ZERO_ERROR;
    UParseError where{};
    Pattern pattern(
        icu::RegexPattern::compile(icu::UnicodeString::fromUTF8(expression), UREGEX_CASE_INSENSITIVE, where, error));
    if (U_FAILURE(error)) throw std::logic_error("invalid expression: " + expression);
    return pattern;
}

/// An expression that matches these characters and no others.
std::string literal(std::string_view text) {
    std::string out;
    for (const char c : text) {
        if (std::string_view(R"(\^$.|?*+()[]{}-&#)").find(c) != std::string_view::npos) out += '\\';
        out += c;
    }
    return out;
}

/// Paths in home directories. "/root" and the home may be followed by a path or stand alone, but must not be the
/// beginning of another name: "/rooted" and "/root.txt" are no home, the "/root." that ends a sentence is one.
Pattern pathPattern(std::string_view home) {
    while (home.ends_with('/'))
        home.remove_suffix(1);
    const std::string alone = R"((?:/[^\s\]\)\"']*|(?!\.?[\p{L}\p{M}\p{N}_-])))";
    std::string expression = R"(/Users/[^\s\]\)\"']+|/home/[^\s\]\)\"']+|(?<![\p{L}\p{M}\p{N}_.-])/root)" + alone;
    if (home.starts_with('/')) expression = literal(home) + alone + "|" + expression;
    return compiled(expression);
}

/// The expressions that every text is searched with, compiled once.
struct FixedPatterns {
    Pattern webURL = compiled(R"(https?://[^\s\]\)\"']+)");
    Pattern fileURL = compiled(R"(file://[^\s\]\)\"']+)");
    // Means [A-Z0-9._%+-]+@[A-Z0-9.-]+\.[A-Z]{2,} and finds the same. A match can begin only where its run of
    // characters begins, or where the match before it has ended; saying so spares the search from trying again at each
    // character of a long run. The counted {2,} would keep a state for each letter.
    Pattern email = compiled(R"((?:\G|(?<![A-Z0-9._%+-]))[A-Z0-9._%+-]+@[A-Z0-9.-]+\.[A-Z][A-Z]+)");
    // Sets in brackets, even of one class, are what the library repeats without keeping a state for each character.
    Pattern credential =
        compiled(R"((token|secret|api[_-]?key|authorization|bearer)[\s]*[:=][\s]*[A-Za-z0-9._~+/\-=]+)");
};

struct Substitution {
    const icu::RegexPattern& pattern;
    std::string_view needed;  ///< no text without it has a match
    std::string_view replacement;
    bool keepsFirstGroup = false;  ///< what the first group matched stays, in front of the replacement
};

/// The text with every match replaced.
std::string substituted(std::string text, const Substitution& substitution) {
    if (text.find(substitution.needed) == std::string::npos) return text;
    UErrorCode error = U_ZERO_ERROR;
    // Bytes that are no UTF-8 read as U+FFFD here, and positions count bytes, so that what is kept is copied as it is.
    const icu::LocalUTextPointer input(
        utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &error));
    const std::unique_ptr<icu::RegexMatcher> matcher(substitution.pattern.matcher(error));
    if (U_FAILURE(error)) throw std::bad_alloc();
    matcher->reset(input.getAlias());
    std::string out;
    std::size_t kept = 0;
    while (matcher->find(error)) {
        const auto end =
            static_cast<std::size_t>(substitution.keepsFirstGroup ? matcher->end64(1, error) : matcher->start64(error));
        out.append(text, kept, end - kept);
        out += substitution.replacement;
        kept = static_cast<std::size_t>(matcher->end64(error));
    }
    if (U_FAILURE(error)) {
        // The search gave up, which takes a lack of memory. What it did not see must not leak.
        return out + "[redacted]";
    }
    if (kept == 0) return text;
    return out.append(text, kept);
}

std::string sanitized(std::string_view text, const icu::RegexPattern& paths) {
    static const FixedPatterns fixed;
    std::string out(text);
    for (const Substitution& substitution : {
             Substitution{*fixed.webURL, "://", "[redacted-url]"},
             Substitution{*fixed.fileURL, "://", "[redacted-file-url]"},
             Substitution{paths, "/", "[redacted-path]"},
             Substitution{*fixed.email, "@", "[redacted-email]"},
             Substitution{*fixed.credential, "", "=[redacted]", true},
         })
        out = substituted(std::move(out), substitution);
    return out;
}

}  // namespace

std::string sanitize(std::string_view text, std::string_view homeDirectory) {
    return sanitized(text, *pathPattern(homeDirectory));
}

std::string sanitize(std::string_view text) {
    static const Pattern paths = [] {
        const char* home = std::getenv("HOME");
        return pathPattern(home != nullptr ? home : "");
    }();
    return sanitized(text, *paths);
}

}  // namespace quorvane::LogPrivacySanitizer
