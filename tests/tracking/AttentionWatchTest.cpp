#include "tracking/AttentionWatch.h"
#include "tracking/SteadyTitle.h"

#include <gmock/gmock.h>

namespace quorvane {
namespace {

TEST(SteadyTitleTest, WhatFlickersInRealTitlesTellsNothingApartAndWhatNamesAThingDoes) {
    struct Row {
        const char* a;
        const char* b;
        bool isSame;
    };
    const Row rows[] = {
        {"Inbox (3) - mia@example.org - Mail", "Inbox (12) - mia@example.org - Mail", true},
        {"(1) general | Team - Chat", "general | Team - Chat", true},
        {"* general | Team - Chat", "! general | Team - Chat", true},
        {"[2] Anna, Ben", "[99+] Anna, Ben", true},
        {"（3）文档", "文档", true},
        {"*notes.txt - Text Editor", "notes.txt - Text Editor", true},
        {"● main.cpp - quorvane - Code", "main.cpp - quorvane - Code", true},
        {"main.cpp* @ quorvane - Builder", "main.cpp @ quorvane - Builder", true},
        {"report.odt • - Writer", "report.odt - Writer", true},
        {"⠋ npm install", "⠹ npm install", true},
        {"✳ fix the tests", "✶ fix the tests", true},
        {"| make all", "/ make all", true},
        {"45% of film.mkv", "46% of film.mkv", true},
        {"45 % of film.mkv", "46 % of film.mkv", true},
        {"film.mkv (45%) - Downloads", "film.mkv - Downloads", true},
        {"1:02 / 4:31 Song - Player", "1:03 / 4:31 Song - Player", true},
        {"▶ Song - Video", "Song - Video", true},
        {"paper.pdf (2/10)", "paper.pdf (3/10)", true},
        {"12:30", "12:31", true},
        {"Chapter 3 - Writer", "Chapter 4 - Writer", false},
        {"main.c - Code", "main.c++ - Code", false},
        {"mia@host: ~", "mia@host: /tmp", false},
        {"Invoice 2026-11", "Invoice 2026-12", false},
        {"Ünal (Berlin)", "Ünal (Paris)", false},
        {"日程 - Browser", "新闻 - Browser", false},
        {"€ 20", "$ 20", false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(steadyTitle(row.a) == steadyTitle(row.b), row.isSame)
            << row.a << " | " << row.b << ": " << steadyTitle(row.a) << " | " << steadyTitle(row.b);
}

TEST(AttentionWatchTest, SomethingNewHasToStandAndBeganWhenItWasFirstSeen) {
    AttentionWatch watch;
    const Date nine = dateFromSecondsSince1970(1'772'614'800);
    const auto see = [&](Seconds at, std::string title, std::optional<std::string> page = std::nullopt) {
        const auto since = watch.see({std::move(title), std::move(page)}, {nine + at, at}, 9s);
        return since ? since->uptime : Seconds{-1};
    };
    watch.begin({"one", std::nullopt});
    EXPECT_EQ(see(10s, "two"), -1s);
    EXPECT_EQ(see(15s, "two"), -1s);
    EXPECT_EQ(see(20s, "three"), -1s);      // begins to count anew
    EXPECT_EQ(see(30s, "three (1)"), 20s);  // flickering does not
    watch.begin({"three", std::nullopt});
    EXPECT_EQ(see(40s, "four"), -1s);
    EXPECT_EQ(see(45s, "three"), -1s);  // and back: forgotten
    EXPECT_EQ(see(50s, "four"), -1s);
    EXPECT_EQ(see(55s, ""), -1s);  // no title at all is no other title

    watch.begin({"page", std::nullopt});
    EXPECT_EQ(see(60s, "page", "https://example.org/a?q=1"), -1s);  // becomes known late
    EXPECT_EQ(see(70s, "page", "https://example.org/a?q=2#top"), -1s);
    EXPECT_EQ(see(80s, "page", "https://example.org/b"), -1s);
    EXPECT_EQ(see(90s, "page", "https://example.org/b"), 80s);
}

}  // namespace
}  // namespace quorvane
