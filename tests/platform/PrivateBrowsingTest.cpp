#include "platform/PrivateBrowsing.h"

#include <gtest/gtest.h>

namespace quorvane::platform {
namespace {

TEST(PrivateBrowsingTest, OnlyATitleWithoutAnyMarkIsThatOfAnOrdinaryWindow) {
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
        {"Page — Ablaze Floorp", "Floorp", "Gecko", true},
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
        {"Page - Google Chrome Beta - Work", "Google Chrome", "Chromium", true},
        {"Page - Google Chrome Beta (Incognito)", "Google Chrome", "Chromium", false},
        {"Page - Chromium (Incognito)", "Chromium", "Chromium", false},
        {"Page - Chromium（シークレット モード）", "Chromium", "Chromium", false},
        {"Page - Chromium（无痕）", "Chromium", "Chromium", false},
        {"About Chromium - Wiki - Chromium (Gast)", "Chromium", "Chromium", false},
        {"Chromium - a guide - Chromium (anonym)", "Chromium", "Chromium", false},
        {"Page - [InPrivate] - Microsoft Edge", "Microsoft Edge", "Chromium", false},
        {"Page", "Some App", "Chromium", false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(PrivateBrowsing::isOrdinary(row.title, row.product, row.toolkit), row.isOrdinary) << row.title;
}

TEST(PrivateBrowsingTest, AMarkCountsOnlyInAWindowOfABrowserThatNamesItself) {
    struct Row {
        const char* application;
        const char* title;
        bool isMarked;
    };
    const Row rows[] = {
        {"org.mozilla.firefox", "Page — Mozilla Firefox Private Browsing", true},
        {"org.mozilla.firefox", "Page — Mozilla Firefox — tryb prywatny", true},
        {"org.mozilla.firefox", "Mozilla Firefox - Wikipedia — Navigation privée de Mozilla Firefox", true},
        {"org.mozilla.firefox", "Page — Mozilla Firefox", false},
        {"org.mozilla.firefox", "Page — Firefox Developer Edition", false},
        {"org.mozilla.firefox", "Library", false},
        {"com.google.Chrome", "Page - Chromium (Incognito)", true},
        {"com.google.Chrome", "Page - Google Chrome（无痕）", true},
        {"com.google.Chrome", "Chromium news - Google Chrome - Work", false},
        {"com.microsoft.edgemac", "Page - [InPrivate] - Microsoft Edge", true},
        {"com.microsoft.edgemac", "Page - Microsoft\u200B Edge", false},
        {"io.gitlab.librewolf-community", "Page — LibreWolf Private Browsing", true},
        {"app.zen_browser.zen", "Page — Zen Browser", false},
        {"org.mozilla.firefox.nightly", "Page — Firefox Nightly Private Browsing", true},
        {"org.kde.falkon", "Page - Falkon (Private Browsing)", true},
        {"org.gnome.Epiphany", "Page", false},
        {"org.example.editor", "Page — Mozilla Firefox Private Browsing", false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(PrivateBrowsing::isMarked(row.application, row.title), row.isMarked) << row.title;
    for (const char* application : {"com.google.Chrome.beta", "com.brave.Browser.nightly", "org.gnome.Epiphany"})
        EXPECT_TRUE(PrivateBrowsing::hidesMark(application)) << application;
    EXPECT_FALSE(PrivateBrowsing::hidesMark("io.gitlab.librewolf-community"));
}

}  // namespace
}  // namespace quorvane::platform
