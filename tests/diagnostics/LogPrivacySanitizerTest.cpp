#include "diagnostics/LogPrivacySanitizer.h"

#include <gmock/gmock.h>
#include <string>
#include <string_view>

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
        {"web", "at HtTpS://example.org/a?b=c#d now", "at [redacted-url] now"},
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
        {"Users", "/uSers/ann/My Documents/x", "[redacted-path] Documents/x"},
        {"nobody's", "/Users/ and /home/ stay", "/Users/ and /home/ stay"},
        {"ends at a bracket or quote", "(/Users/a) [/Users/b] '/home/c' \"/root/d\"",
         "([redacted-path]) [[redacted-path]] '[redacted-path]' \"[redacted-path]\""},
        {"home", "read /home/bob/.config/x:3", "read [redacted-path]"},
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
        {"slashes at its end", "/srv/ann//", "/srv/ann/x /srv/anna", "[redacted-path] /srv/anna"},
        {"characters of expressions", "/srv/a+(b)[c]{2}|^$\\E", "/srv/a+(b)[c]{2}|^$\\E/x", "[redacted-path]"},
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
        {"a top level", "ann.b+x@mail.io BOB@X.ORG9 ann@localhost a@b.c",
         "[redacted-email] [redacted-email]9 ann@localhost a@b.c"},
        {"the longest domain", "a@b.cc.dd.e", "[redacted-email].e"},
        {"the next may begin where one ends", "a@b.cc-d@e.ff", "[redacted-email][redacted-email]"},
        {"one at each sign", "a@b@c.dd", "a@[redacted-email]"},
        {"after a sign that no address has", "<a@b.cc>;mailto:c@d.ee", "<[redacted-email]>;mailto:[redacted-email]"},
    });
}

TEST(LogPrivacySanitizerTest, ReplacesCredentialsAndKeepsTheirWord) {
    expectRows({
        {"blanks around", "Token \t=  abc.DEF-1", "Token=[redacted]"},
        {"over a line end", "api_key:\n  x y", "api_key=[redacted] y"},
        {"keys", "apikey=1 api-key=2 API_KEY=3 api key=4",
         "apikey=[redacted] api-key=[redacted] API_KEY=[redacted] api key=4"},
        {"without separator", "bearer abcdef token x", "bearer abcdef token x"},
        {"both words", "Authorization: Bearer: abc", "Authorization=[redacted]: abc"},
        {"signs of a value", "token=a.b_c~d+e/f-g=h,i", "token=[redacted],i"},
        {"end of a longer word", "my_access_token=1", "my_access_token=[redacted]"},
        {"nothing follows", "token: , secret=", "token: , secret="},
    });
}

TEST(LogPrivacySanitizerTest, AppliesTheSubstitutionsInOrder) {
    expectRows({
        {"a file URL before the path in it", "file:///Users/a/b", "[redacted-file-url]"},
        {"a path before the address in it", "/Users/a@b.cc", "[redacted-path]"},
        {"a credential that is a URL", "token=https://x.y", "token=[redacted-url]"},
        {"twice", sanitize("token: a /Users/b c@d.ee", home), "token=[redacted] [redacted-path] [redacted-email]"},
    });
}

TEST(LogPrivacySanitizerTest, AllOtherBytesComeOutAsTheyWentIn) {
    using namespace std::string_literals;
    expectRows({
        {"no UTF-8", "\xff\xc3 http://a/\xff\xfe \x80\xf0\x9f", "\xff\xc3 [redacted-url] \x80\xf0\x9f"},
        {"a surrogate and an overlong form", "\xed\xa0\x80 a@b.cc \xc0\xaf", "\xed\xa0\x80 [redacted-email] \xc0\xaf"},
        {"zero bytes", "a\0token=1\0b"s, "a\0token=[redacted]\0b"s},
        {"beyond the basic plane", "😀 /Users/😀/x 😀", "😀 [redacted-path] 😀"},
    });
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
        unchanged("a domain that never ends", "x@" + repeated("b.c1")),
        unchanged("an address without end", repeated("a@b.")),
        unchanged("a word and blanks", "token" + repeated(" ")),
        {"an endless top level", "x@y." + repeated("z"), "[redacted-email]"},
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
