#include "diagnostics/LogPrivacySanitizer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <unicode/regex.h>

namespace quorvane {
namespace {

using LogPrivacySanitizer::sanitize;

struct Row {
    const char* name;
    std::string text;
    std::string expected;
};

constexpr std::string_view home = "/data/people/ann.b";

template <std::size_t count>
void expectRows(const Row (&rows)[count]) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(sanitize(row.text, home), row.expected);
    }
}

TEST(LogPrivacySanitizerTest, ReplacesURLs) {
    expectRows({
        {"web", "at https://example.org/a?b=c#d now", "at [redacted-url] now"},
        {"plain and in capitals", "HTTP://X y HtTpS://Z", "[redacted-url] y [redacted-url]"},
        {"ends at a bracket", "[http://a.b/c] (http://d) \"http://e\" 'http://f'",
         "[[redacted-url]] ([redacted-url]) \"[redacted-url]\" '[redacted-url]'"},
        {"full-width text belongs to it", "见 https://例子.cn/工作。然后 好", "见 [redacted-url] 好"},
        {"a host must follow", "https:// and http://\"", "https:// and http://\""},
        {"ends at a line end", "http://a\nhttp://b\r\n", "[redacted-url]\n[redacted-url]\r\n"},
        {"file", "open file:///Users/ann/x.txt.", "open [redacted-file-url]"},
        {"other schemes stay", "ftp://a.b zoom://c", "ftp://a.b zoom://c"},
    });
}

TEST(LogPrivacySanitizerTest, ReplacesPathsInHomeDirectories) {
    expectRows({
        {"Users", "/Users/ann/My Documents/x", "[redacted-path] Documents/x"},
        {"Users, other capitals", "/users/ann", "[redacted-path]"},
        {"nobody's", "/Users/ and /home/ stay", "/Users/ and /home/ stay"},
        {"ends at a bracket or quote", "(/Users/a) [/Users/b] '/home/c' \"/root/d\"",
         "([redacted-path]) [[redacted-path]] '[redacted-path]' \"[redacted-path]\""},
        {"home", "read /home/bob/.config/x:3", "read [redacted-path]"},
        {"home alone", "cd /home/bob", "cd [redacted-path]"},
        {"inside a path", "/var/home/bob/x", "/var[redacted-path]"},
        {"only looks like home", "/homepage/x /homes /home", "/homepage/x /homes /home"},
        {"root", "/root/.bashrc and /root", "[redacted-path] and [redacted-path]"},
        {"root ends a sentence", "It is /root. Or /root, or (/root)?",
         "It is [redacted-path]. Or [redacted-path], or ([redacted-path])?"},
        {"only looks like root", "/rooted /root.txt /root-x /root_ /rooté /srv/root/x",
         "/rooted /root.txt /root-x /root_ /rooté /srv/root/x"},
        {"the process's", "/data/people/ann.b/notes and /data/people/ann.b", "[redacted-path] and [redacted-path]"},
        {"only looks like the process's", "/data/people/ann.bell /data/people/annxb /data/people",
         "/data/people/ann.bell /data/people/annxb /data/people"},
    });
}

TEST(LogPrivacySanitizerTest, AHomeDirectoryIsTakenLiterallyAndOnlyIfItIsOne) {
    struct HomeRow {
        const char* name;
        const char* home;
        const char* text;
        const char* expected;
    };
    const HomeRow rows[] = {
        {"none", "", "/opt/x /", "/opt/x /"},
        {"the root directory", "/", "/opt/x /", "/opt/x /"},
        {"relative", "home", "at home/x", "at home/x"},
        {"slashes at its end", "/srv/ann//", "/srv/ann/x /srv/anna", "[redacted-path] /srv/anna"},
        {"characters of expressions", "/srv/a+(b)[c]{2}|^$\\E", "/srv/a+(b)[c]{2}|^$\\E/x", "[redacted-path]"},
        {"a blank", "/srv/my home", "/srv/my home/x y", "[redacted-path] y"},
        {"no ASCII", "/srv/工作", "/srv/工作/x /srv/工作室", "[redacted-path] /srv/工作室"},
        {"below another one", "/data/home/ann", "/data/home/ann/x /data/home/bob/x",
         "[redacted-path] /data[redacted-path]"},
    };
    for (const HomeRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(sanitize(row.text, row.home), row.expected);
    }
}

TEST(LogPrivacySanitizerTest, ReplacesMailAddresses) {
    expectRows({
        {"capitals or not", "ann.b+x@mail.example.org, BOB@X.IO", "[redacted-email], [redacted-email]"},
        {"no top level", "ann@localhost a@b.c", "ann@localhost a@b.c"},
        {"ends before a digit", "a@b.cc9", "[redacted-email]9"},
        {"the longest domain", "a@b.cc.dd.e", "[redacted-email].e"},
        {"the next may begin where one ends", "a@b.cc-d@e.ff", "[redacted-email][redacted-email]"},
        {"one at each sign", "a@b@c.dd", "a@[redacted-email]"},
        {"after a sign that no address has", "<a@b.cc>;mailto:c@d.ee", "<[redacted-email]>;mailto:[redacted-email]"},
    });
}

TEST(LogPrivacySanitizerTest, ReplacesCredentialsAndKeepsTheirWord) {
    expectRows({
        {"colon and blank", "Token: abc.DEF-1", "Token=[redacted]"},
        {"blanks around", "secret \t=  x", "secret=[redacted]"},
        {"over a line end", "api_key:\n  x y", "api_key=[redacted] y"},
        {"keys", "apikey=1 api-key=2 API_KEY=3 api key=4",
         "apikey=[redacted] api-key=[redacted] API_KEY=[redacted] api key=4"},
        {"without separator", "bearer abcdef token x", "bearer abcdef token x"},
        {"only the next word", "Authorization: Bearer abc", "Authorization=[redacted] abc"},
        {"both words", "Authorization: Bearer: abc", "Authorization=[redacted]: abc"},
        {"signs of a value", "token=a.b_c~d+e/f-g=h,i", "token=[redacted],i"},
        {"end of a longer word", "my_access_token=1", "my_access_token=[redacted]"},
        {"nothing follows", "token: , secret=", "token: , secret="},
    });
}

TEST(LogPrivacySanitizerTest, AppliesTheSubstitutionsInOrder) {
    expectRows({
        {"a file URL before the path in it", "file:///Users/a/b", "[redacted-file-url]"},
        {"a mail address in a URL", "https://x.y/?m=a@b.cc", "[redacted-url]"},
        {"a path before the address in it", "/Users/a@b.cc", "[redacted-path]"},
        {"a URL that introduces a credential", "https://x.y?token=1", "[redacted-url]"},
        {"a credential that is a URL", "token=https://x.y", "token=[redacted-url]"},
        {"twice", sanitize("token: a /Users/b c@d.ee", home), "token=[redacted] [redacted-path] [redacted-email]"},
    });
}

TEST(LogPrivacySanitizerTest, AllOtherBytesComeOutAsTheyWentIn) {
    using namespace std::string_literals;
    expectRows({
        {"empty", "", ""},
        {"no UTF-8", "\xff\xc3 http://a/\xff\xfe \x80\xf0\x9f", "\xff\xc3 [redacted-url] \x80\xf0\x9f"},
        {"a surrogate and an overlong form", "\xed\xa0\x80 a@b.cc \xc0\xaf", "\xed\xa0\x80 [redacted-email] \xc0\xaf"},
        {"a character cut off before a match", "\xe5\xb7token=1", "\xe5\xb7token=[redacted]"},
        {"zero bytes", "a\0token=1\0b"s, "a\0token=[redacted]\0b"s},
        {"line ends", "\r\na\r\n\n", "\r\na\r\n\n"},
        {"beyond the basic plane", "😀 /Users/😀/x 😀", "😀 [redacted-path] 😀"},
    });
}

/// The five substitutions as they are written down, home directories other than /Users aside.
std::string plainlySanitized(const std::string& text) {
    struct Substitution {
        Substitution(const char* expression, const char* with)
            : matcher(icu::UnicodeString::fromUTF8(expression), UREGEX_CASE_INSENSITIVE, error), replacement(with) {}
        UErrorCode error = U_ZERO_ERROR;
        icu::RegexMatcher matcher;
        icu::UnicodeString replacement;
    };
    static Substitution substitutions[] = {
        {R"(https?://[^\s\]\)\"']+)", "[redacted-url]"},
        {R"(file://[^\s\]\)\"']+)", "[redacted-file-url]"},
        {R"(/Users/[^\s\]\)\"']+)", "[redacted-path]"},
        {R"([A-Z0-9._%+-]+@[A-Z0-9.-]+\.[A-Z]{2,})", "[redacted-email]"},
        {R"((?i)(token|secret|api[_-]?key|authorization|bearer)\s*[:=]\s*[A-Za-z0-9._~+/\-=]+)", "$1=[redacted]"},
    };
    auto out = icu::UnicodeString::fromUTF8(text);
    for (auto& [error, matcher, replacement] : substitutions) {
        matcher.reset(out);
        icu::UnicodeString replaced = matcher.replaceAll(replacement, error);
        EXPECT_TRUE(U_SUCCESS(error));
        out = std::move(replaced);
    }
    std::string result;
    return out.toUTF8String(result);
}

TEST(LogPrivacySanitizerTest, FindsWhatThePlainExpressionsFind) {
    const char* const pieces[] = {
        "a",      "Z",     "9",     ".",       "@",       "-",        "%", " ", "\n", "\t", ":",
        "=",      "/",     "token", "Bearer",  "api_key", "ſecret",   "]", "'", "工", "bb", "a@b.bb",
        "@Z.bb-", "http:", "//",    "https:/", "file://", "/Users/x", "K", "ı", "_",  "~"};
    std::mt19937 random(20260302);
    for (int i = 0; i < 50000; ++i) {
        std::string text;
        for (int length = static_cast<int>(random() % 24); length > 0; --length)
            text += pieces[random() % std::size(pieces)];
        ASSERT_EQ(sanitize(text), plainlySanitized(text)) << text;
    }
}

// Each of these takes minutes or the whole stack where the search goes back over what it has seen.
TEST(LogPrivacySanitizerTest, HugeLinesTakeNoMoreThanTheirLength) {
    constexpr std::size_t size = 5'000'000;
    const auto repeated = [](std::string_view piece) {
        std::string text;
        while (text.size() < size)
            text += piece;
        return text;
    };
    const auto unchanged = [](const char* name, std::string text) { return Row{name, text, text}; };
    const Row rows[] = {
        unchanged("one run of letters", repeated("a") + "@"),
        unchanged("a domain that never ends", "x@" + repeated("b.c1")),
        unchanged("an address without end", repeated("a@b.")),
        unchanged("a word and blanks", "token" + repeated(" ")),
        unchanged("a word, a colon and blanks", "token:" + repeated(" ")),
        {"an endless top level", "x@y." + repeated("z"), "[redacted-email]"},
        {"an endless URL", "https://" + repeated("z"), "[redacted-url]"},
        {"an endless value", "token=" + repeated("z"), "token=[redacted]"},
        {"an endless home", "/home/" + repeated("x/"), "[redacted-path]"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_TRUE(sanitize(row.text, home) == row.expected);
    }
}

}  // namespace
}  // namespace quorvane
