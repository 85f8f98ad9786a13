#include "capture/ChatTitleSearch.h"

#include "platform/simulated/SimulatedAccessibility.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

namespace Name = platform::AccessibleName;

constexpr const char* telegram = "ru.keepcoder.Telegram";

std::string repeated(const std::string& piece, int times) {
    std::string text;
    for (int i = 0; i < times; ++i)
        text += piece;
    return text;
}

TEST(ChatTitleSearchTest, ChatApplicationsAreKnownInAnyCase) {
    for (const char* bundleId : {"com.tencent.xinWeChat", "com.apple.MobileSMS", "com.apple.iChat", "com.whatsapp"})
        EXPECT_TRUE(ChatTitleSearch::isChatApplication(bundleId)) << bundleId;
    for (const char* bundleId : {"com.apple.mail", "net.whatsapp.whatsapp", "com.tencent.qq2", ""})
        EXPECT_FALSE(ChatTitleSearch::isChatApplication(bundleId)) << bundleId;
}

TEST(ChatTitleSearchTest, ATitleIsAShortLineThatNamesSomething) {
    // The one between blanks is trimmed first.
    const std::string titles[] = {"Anna",
                                  repeated("x", 48),
                                  repeated("项", 48),
                                  repeated("é", 48),
                                  repeated("👩‍👩‍👧‍👦", 47).append("x"),
                                  repeated(" ", 9).append(repeated("x", 48)).append("\n "),
                                  "Teams at work",
                                  "7",
                                  "٣",
                                  "张三",
                                  "🎉 Anna"};
    for (const auto& text : titles)
        EXPECT_TRUE(ChatTitleSearch::isPlausible(text, telegram)) << text;
    // A heart holds a mark, which is no letter; a half is a number, but no decimal digit.
    const std::string others[] = {
        repeated("x", 49), repeated("e\u0301", 49), "two\nlines", "",      " \t\n", "WeChat", " 微信 ",
        "Microsoft Teams", "RU.keepcoder.telegram", "•••",        "— ! —", "😀🎉",    "❤️", "½"};
    for (const auto& text : others)
        EXPECT_FALSE(ChatTitleSearch::isPlausible(text, telegram)) << text;
}

class ChatTitleSearchInATreeTest : public testing::Test {
protected:
    std::optional<std::string> find() { return ChatTitleSearch::find(tree, {"app"}, {"window"}, telegram); }

    /// `below` as the only descendant of `top`, so many levels down.
    void nest(const std::string& top, int levels, const std::string& below) {
        std::string parent = top;
        for (int i = 1; i < levels; ++i) {
            const std::string child = top + std::to_string(i);
            tree.setChildren(parent, {child});
            parent = child;
        }
        tree.setChildren(parent, {below});
    }

    /// As many silent children below `top`, and one after them.
    void widen(const std::string& top, int silent, const std::string& last) {
        std::vector<std::string> children;
        for (int i = 0; i < silent; ++i)
            children.push_back(top + std::to_string(i));
        children.push_back(last);
        tree.setChildren(top, children);
    }

    platform::SimulatedAccessibility tree;
};

TEST_F(ChatTitleSearchInATreeTest, GoesFourLevelsBelowTheWindowAndThreeBelowTheFocus) {
    tree.setText("chat", Name::title, "Anna");
    nest("window", 5, "chat");
    EXPECT_EQ(find(), std::nullopt);
    nest("window", 4, "chat");
    EXPECT_EQ(find(), "Anna");

    tree.setElement("app", Name::focusedElement, "focus");
    tree.setText("other", Name::title, "Ben");
    nest("focus", 4, "other");
    EXPECT_EQ(find(), "Anna");
    nest("focus", 3, "other");
    EXPECT_EQ(find(), "Ben");
}

TEST_F(ChatTitleSearchInATreeTest, VisitsEightyElementsAroundTheFocusAndThenTwiceSixtyInTheWindow) {
    tree.setElement("app", Name::focusedElement, "focus");
    tree.setText("near", Name::title, "Ben");
    widen("focus", 78, "near");
    EXPECT_EQ(find(), "Ben");
    widen("focus", 79, "near");
    EXPECT_EQ(find(), std::nullopt);

    tree.setText("chat", Name::title, "Anna");
    widen("window", 118, "chat");
    EXPECT_EQ(find(), "Anna");
    widen("window", 119, "chat");
    EXPECT_EQ(find(), std::nullopt);
}

TEST_F(ChatTitleSearchInATreeTest, TakesTheFirstPlausibleTextInDepthUntrimmed) {
    tree.setText("window", Name::title, "Telegram");
    tree.setText("window", Name::value, "hidden behind the title");
    tree.setText("list", Name::title, "");
    tree.setText("list", Name::value, "😀");
    tree.setText("header", Name::description, " Anna ");
    tree.setText("later", Name::title, "Ben");
    tree.setChildren("window", {"list", "later"});
    tree.setChildren("list", {"header"});
    EXPECT_EQ(find(), " Anna ");
}

}  // namespace
}  // namespace quorvane
