#include "base/Text.h"

#include "support/Matching.h"

namespace quorvane {
namespace {

using namespace std::string_literals;
using Rows = std::vector<std::pair<std::string, std::string>>;  ///< what goes in and what comes out

TEST(TextTest, LowerCaseIsUnicodesAndNoLanguages) {
    for (const auto& [input, expected] : Rows{{"AZ ÄÉ ßẞ [@", "az äé ßß [@"}, {"ΟΔΟΣ", "οδος"}, {"İI", "i̇i"}})
        EXPECT_EQ(text::lowercased(input), expected);
}

TEST(TextTest, FoldedTextsTellNeitherCaseNorDiacriticsApart) {
    const Rows rows = {{"Éé e\u0301", "ee e"},    {"Straße STRAẞE", "strasse strasse"},
                       {"ΣΑΣ σας", "σασ σασ"},    {"İstanbul", "istanbul"},
                       {"ı Đ ＡＢ", "ı đ ａｂ"},  {"ᾳ ᾼ α\u0345", "α α α"},
                       {"工作 Mail", "工作 mail"}};
    for (const auto& [input, expected] : rows)
        EXPECT_EQ(text::folded(input), expected);
}

TEST(TextTest, EqualityIgnoringCaseKeepsDiacriticsApart) {
    EXPECT_TRUE(text::equalsIgnoringCase("Über", "U\u0308BER"));
    EXPECT_TRUE(text::equalsIgnoringCase("Straße", "STRASSE"));
    EXPECT_FALSE(text::equalsIgnoringCase("Über", "Uber"));
}

TEST(TextTest, ASearchFindsWholeCharactersButNothingFindsAnEmptyPart) {
    EXPECT_TRUE(text::containsFolded("Café – RÉSUMÉ.pdf", "resume"));
    EXPECT_TRUE(text::containsFolded("resume", "É"));
    EXPECT_TRUE(text::containsFolded("broken \xff here", "\xff HERE"));
    EXPECT_FALSE(text::containsFolded("resume", "resumé s"));
    EXPECT_FALSE(text::containsFolded("anything", ""));
}

TEST(TextTest, TrimmingTakesBlanksAndOnlyOnDemandLineEnds) {
    struct Row {
        const char* input;
        const char* blanks;
        const char* newlinesToo;
    };
    const Row rows[] = {
        {" \t x y \u3000\u00a0", "x y", "x y"},
        {"\n x\r\n", "\n x\r\n", "x"},
        {" \n x", "\n x", "x"},
        {"\u2028x\u0085\u2029\v\f", "\u2028x\u0085\u2029\v\f", "x"},
        {" \t\u3000", "", ""},
        {"\u200bx\ufeff", "\u200bx\ufeff", "\u200bx\ufeff"},
        {" \xff \xe5\xb7 ", "\xff \xe5\xb7", "\xff \xe5\xb7"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(text::trimmed(row.input), row.blanks);
        EXPECT_EQ(text::trimmedWithNewlines(row.input), row.newlinesToo);
    }
}

TEST(TextTest, WidthCountsColumnsOfATerminal) {
    const std::pair<const char*, int> rows[] = {
        {"abc", 3}, {"工作", 4},     {"ａ", 2},     {"e\u0301", 1},        {"😀", 2},
        {"ｱ", 1},   {"a\u200bb", 2}, {"한글", 4},   {"ᄒ\u1161\u11ab", 2}, {"\a\x1b", 0},
        {"±", 1},   {"\xff\xff", 2}, {"❤\ufe0f", 1}};
    for (const auto& [text, width] : rows)
        EXPECT_EQ(text::displayWidth(text), width) << text;
}

TEST(TextTest, FittedTextEndsWithAnEllipsisWhenSomethingHadToGo) {
    struct Row {
        const char* text;
        int width;
        const char* expected;
    };
    const Row rows[] = {
        {"abc", 3, "abc"},    {"abcd", 3, "ab…"}, {"工作日", 6, "工作日"}, {"工作日", 5, "工作…"},
        {"工作日", 4, "工…"}, {"工作日", 0, ""},  {"abc", -1, ""},         {"e\u0301e\u0301e\u0301", 2, "e\u0301…"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(text::fittedTo(row.text, row.width), row.expected) << row.text;
}

TEST(TextTest, WhatIsNoUTF8IsReplaced) {
    const Rows rows = {{"aé工😀", "aé工😀"},       {"a\0é"s, "a\0é"s},           {"a\xff\x80z", "a\ufffd\ufffdz"},
                       {"a\xe5\xb7", "a\ufffd"}, {"\xc0\xaf", "\ufffd\ufffd"}, {"\xed\xa0\x80", "\ufffd\ufffd\ufffd"}};
    for (const auto& [input, expected] : rows)
        EXPECT_EQ(text::validUtf8(input), expected);
}

TEST(TextTest, PiecesAreOneMoreThanSeparators) {
    EXPECT_THAT(text::split("", ','), ElementsAre(""));
    EXPECT_THAT(text::split(",a,,b,", ','), ElementsAre("", "a", "", "b", ""));
    EXPECT_EQ(text::joined({"", "a", ""}, ", "), ", a, ");
}

TEST(TextTest, LettersIncludeMarksAndEveryScript) {
    for (const char32_t letter : {U'a', U'工', U'\u0301', U'א'})
        EXPECT_TRUE(text::isLetter(letter));
    for (const char32_t other : {U'1', U'٣', U'_', U'😀', U'Ⅷ'})
        EXPECT_FALSE(text::isLetter(other));
    for (const char32_t digit : {U'0', U'9', U'٣'})
        EXPECT_TRUE(text::isDigit(digit));
    for (const char32_t other : {U'a', U'½', U'²', U'一'})
        EXPECT_FALSE(text::isDigit(other));
}

TEST(TextTest, NumbersHaveTheFewestDigitsThatReadBack) {
    const std::pair<double, const char*> rows[] = {
        {20, "20.0"}, {1.0 / 3, "0.3333333333333333"}, {-0.0, "-0.0"}, {1e20, "1e+20"}, {1234567.25, "1234567.25"}};
    for (const auto& [number, expected] : rows)
        EXPECT_EQ(text::shortest(number), expected);
}

}  // namespace
}  // namespace quorvane
