#include "platform/linux/BrowserWindowTitle.h"

#include <gtest/gtest.h>

namespace quorvane::platform {
namespace {

TEST(BrowserWindowTitleTest, OnlyATitleWithoutAnyMarkIsThatOfAnOrdinaryWindow) {
    struct Row {
        const char* title;
        const char* product;
        const char* toolkit;
        bool isOrdinary;
    };
    const Row rows[] = {
        {"Page — Mozilla Firefox", "Firefox", "Gecko", true},
        {"Mozilla Firefox", "Firefox", "Gecko", true},
        {"Page — Work — Mozilla Firefox", "Firefox", "Gecko", true},
        {"Page — LibreWolf", "LibreWolf", "Gecko", true},
        {"Page — Mozilla Firefox Private Browsing", "Firefox", "Gecko", false},
        {"Mozilla Firefox Private Browsing", "Firefox", "Gecko", false},
        {"Page — Navigation privée de Mozilla Firefox", "Firefox", "Gecko", false},
        {"Page — Приватный просмотр Mozilla Firefox", "Firefox", "Gecko", false},
        {"Page — Mozilla Firefox — tryb prywatny", "Firefox", "Gecko", false},
        {"Page — Mozilla Firefox-privénavigatie", "Firefox", "Gecko", false},
        {"Firefox", "", "Gecko", false},
        {"", "Firefox", "Gecko", false},
        {"Page - Chromium", "Chromium", "Chromium", true},
        {"Page – Chromium", "Chromium", "Chromium", true},
        {"Page: Chromium", "Chromium", "Chromium", true},
        {"Page - Chromium - Work", "Chromium", "Chromium", true},
        {"Page - Chromium (Incognito)", "Chromium", "Chromium", false},
        {"Page - Chromium（シークレット モード）", "Chromium", "Chromium", false},
        {"Page - Chromium（无痕）", "Chromium", "Chromium", false},
        {"About Chromium - Wiki - Chromium (Gast)", "Chromium", "Chromium", false},
        {"Chromium - a guide - Chromium (anonym)", "Chromium", "Chromium", false},
        {"Page - [InPrivate] - Microsoft Edge", "Microsoft Edge", "Chromium", false},
        {"Page", "Some App", "Chromium", false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(BrowserWindowTitle::isOrdinary(row.title, row.product, row.toolkit), row.isOrdinary) << row.title;
}

TEST(BrowserWindowTitleTest, AWindowShowsThePageWhoseTitleItBears) {
    const char* window = "Old  news of today — Mozilla Firefox";
    EXPECT_TRUE(BrowserWindowTitle::isOfPage(window, "Old news of today"));
    EXPECT_TRUE(BrowserWindowTitle::isOfPage(window, ""));
    EXPECT_FALSE(BrowserWindowTitle::isOfPage(window, "News of today"));
    const std::string head(50, 'x');
    EXPECT_TRUE(BrowserWindowTitle::isOfPage(head + "…", head + " and the rest"));
}

}  // namespace
}  // namespace quorvane::platform
