#include "base/Text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

using testing::ElementsAre;

struct Row {
    const char* name;
    std::string input;
    std::string expected;
};

TEST(TextTest, LowerCaseIsUnicodesAndNoLanguages) {
    const Row rows[] = {
        {"ASCII", "AZ az 09 [@", "az az 09 [@"},
        {"accents stay", "ÄÉ ßẞ", "äé ßß"},
        {"Greek at a word's end", "ΟΔΟΣ ΣΑΣ", "οδος σας"},
        {"dotted capital I", "İI", "i̇i"},
        {"no case at all", "工作 😀", "工作 😀"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(text::lowercased(row.input), row.expected);
    }
}

TEST(TextTest, FoldedTextsTellNeitherCaseNorDiacriticsApart) {
    const Row rows[] = {
        {"ASCII", "Zoom", "zoom"},
        {"composed and decomposed", "Éé e\u0301", "ee e"},
        {"several marks", "Việt ǟ", "viet a"},
        {"sharp s", "Straße STRAẞE", "strasse strasse"},
        {"dotted capital I", "İstanbul", "istanbul"},
        {"dotless i is a letter of its own", "ı", "ı"},
        {"Greek sigmas", "ΣΑΣ σας", "σασ σασ"},
        {"iota below is a mark", "ᾳ ᾼ α\u0345", "α α α"},
        {"Cyrillic", "Йод", "иод"},
        {"Chinese", "工作 Mail", "工作 mail"},
        {"width is no diacritic", "ＡＢ", "ａｂ"},
        {"Vietnamese d has a stroke, no mark", "Đ", "đ"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(text::folded(row.input), row.expected);
    }
    EXPECT_TRUE(text::equalsFolded("Über", "U\u0308BER"));
    EXPECT_FALSE(text::equalsFolded("uber", "uberx"));
}

TEST(TextTest, ASearchFindsWholeCharactersButNothingFindsAnEmptyPart) {
    EXPECT_TRUE(text::containsFolded("Café – RÉSUMÉ.pdf", "resume"));
    EXPECT_TRUE(text::containsFolded("resume", "É"));
    EXPECT_TRUE(text::containsFolded("项目文档", "文档"));
    EXPECT_FALSE(text::containsFolded("resume", "resumé s"));
    EXPECT_FALSE(text::containsFolded("anything", ""));
    EXPECT_FALSE(text::containsFolded("", "x"));
    EXPECT_TRUE(text::containsFolded("broken \xff here", "\xff HERE"));
}

TEST(TextTest, TrimmingTakesBlanksAndOnlyOnDemandLineEnds) {
    struct TrimRow {
        const char* name;
        const char* input;
        const char* blanks;
        const char* newlinesToo;
    };
    const TrimRow rows[] = {
        {"blanks", " \t x y \t", "x y", "x y"},
        {"line ends", "\n x\r\n", "\n x\r\n", "x"},
        {"a blank beyond a line end", " \n x", "\n x", "x"},
        {"wide and unbreakable blanks", "\u3000\u00a0x\u2003", "x", "x"},
        {"separators of lines", "\u2028x\u0085\u2029\v\f", "\u2028x\u0085\u2029\v\f", "x"},
        {"blanks alone", " \t\u3000", "", ""},
        {"no width is no blank", "\u200bx\ufeff", "\u200bx\ufeff", "\u200bx\ufeff"},
        {"bytes that are no text", " \xff \xe5\xb7 ", "\xff \xe5\xb7", "\xff \xe5\xb7"},
        {"empty", "", "", ""},
    };
    for (const TrimRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(text::trimmed(row.input), row.blanks);
        EXPECT_EQ(text::trimmedWithNewlines(row.input), row.newlinesToo);
    }
}

TEST(TextTest, WidthCountsColumnsOfATerminal) {
    struct WidthRow {
        const char* text;
        int width;
    };
    const WidthRow rows[] = {
        {"", 0},       {"abc", 3}, {"工作", 4},     {"ａ", 2},      {"e\u0301", 1},
        {"😀", 2},      {"ｱ", 1},   {"a\u200bb", 2}, {"한글", 4},    {"\u1112\u1161\u11ab", 2},
        {"\a\x1b", 0}, {"±", 1},   {"\xff\xff", 2}, {"❤\ufe0f", 1},
    };
    for (const WidthRow& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(text::displayWidth(row.text), row.width);
    }
}

TEST(TextTest, FittedTextEndsWithAnEllipsisWhenSomethingHadToGo) {
    struct FitRow {
        const char* text;
        int width;
        const char* expected;
    };
    const FitRow rows[] = {
        {"abc", 3, "abc"},         {"abcd", 3, "ab…"},
        {"工作日", 6, "工作日"},   {"工作日", 5, "工作…"},
        {"工作日", 4, "工…"},      {"工作日", 1, "…"},
        {"工作日", 0, ""},         {"", 0, ""},
        {"abc", -1, ""},           {"e\u0301e\u0301e\u0301", 2, "e\u0301…"},
        {"e\u0301", 1, "e\u0301"},
    };
    for (const FitRow& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(text::fittedTo(row.text, row.width), row.expected);
    }
}

TEST(TextTest, WhatIsNoUTF8IsReplaced) {
    using namespace std::string_literals;
    const Row rows[] = {
        {"valid", "aé工😀", "aé工😀"},
        {"zero byte", "a\0é"s, "a\0é"s},
        {"single bytes", "a\xff\x80z", "a\ufffd\ufffdz"},
        {"cut off", "a\xe5\xb7", "a\ufffd"},
        {"overlong", "\xc0\xaf", "\ufffd\ufffd"},
        {"a surrogate", "\xed\xa0\x80", "\ufffd\ufffd\ufffd"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(text::validUtf8(row.input), row.expected);
    }
}

TEST(TextTest, PiecesAreOneMoreThanSeparators) {
    EXPECT_THAT(text::split("", ','), ElementsAre(""));
    EXPECT_THAT(text::split(",a,,b,", ','), ElementsAre("", "a", "", "b", ""));
    EXPECT_EQ(text::joined(text::split(",a,,b,", ','), ","), ",a,,b,");
}

TEST(TextTest, LettersIncludeMarksAndEveryScript) {
    for (const char32_t letter : {U'a', U'ß', U'工', U'\u0301', U'א'})
        EXPECT_TRUE(text::isLetter(letter));
    for (const char32_t other : {U'1', U'٣', U'_', U' ', U'😀', U'Ⅷ'})
        EXPECT_FALSE(text::isLetter(other));
    for (const char32_t digit : {U'0', U'9', U'٣', U'９'})
        EXPECT_TRUE(text::isDigit(digit));
    for (const char32_t other : {U'a', U'½', U'²', U'一'})
        EXPECT_FALSE(text::isDigit(other));
}

TEST(TextTest, NumbersHaveTheFewestDigitsThatReadBack) {
    struct NumberRow {
        double number;
        const char* expected;
    };
    const NumberRow rows[] = {
        {20, "20.0"},    {0.1, "0.1"},   {1.0 / 3, "0.3333333333333333"}, {-0.0, "-0.0"},
        {1e20, "1e+20"}, {-1.5, "-1.5"}, {1234567.25, "1234567.25"},      {0.30000000000000004, "0.30000000000000004"}};
    for (const NumberRow& row : rows)
        EXPECT_EQ(text::shortest(row.number), row.expected);
}

}  // namespace
}  // namespace quorvane
