#include "shell/state/MenuBarContentView.h"

#include "shell/state/TrackedScene.h"
#include "support/Mapped.h"
#include "support/Matching.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

class MenuBarContentViewTest : public testing::Test {
protected:
    /// An item a line: "text [icon]", "(text)" where it can't be chosen, "-" for a separator.
    [[nodiscard]] std::vector<std::string> lines() const {
        return mapped(menuBar_.items(), [](const MenuBarItem& item) -> std::string {
            if (item.kind == MenuBarItem::Kind::separator) return "-";
            return item.isEnabled ? fmt::format("{} [{}]", item.text, item.iconName) : "(" + item.text + ")";
        });
    }

    void choose(const std::string& text) {
        for (const MenuBarItem& item : menuBar_.items())
            if (item.text == text) menuBar_.perform(item.action);
    }

    TrackedScene scene_;
    platform::SimulatedDesktop& desktop_ = scene_.desktop;
    PermissionChecker& checker_ = scene_.permissions;
    Localization english_{"en"};
    std::vector<std::string> asked_;
    MenuBarContentView menuBar_{scene_.session.tracker(),
                                checker_,
                                english_,
                                {.openMainWindow = [this] { asked_.emplace_back("window"); },
                                 .showAbout = [this] { asked_.emplace_back("about"); },
                                 .quit = [this] { asked_.emplace_back("quit"); }}};
};

TEST_F(MenuBarContentViewTest, ItemsStandInTheirOrderAndFollowTracking) {
    const std::vector<std::string> paused = lines();
    EXPECT_THAT(paused, ElementsAre("(Paused)", "-", "Open Quorvane [window]", "Start Recording [record]", "-",
                                    "(Permissions)", "Accessibility [close-circle]", "Automation [close-circle]",
                                    "Input monitoring [close-circle]", "Check Permissions Again [refresh]", "-",
                                    "About Quorvane [info]", "Quit Quorvane [power]"));
    int changes = 0;
    const auto changed = menuBar_.changed.subscribe([&] { ++changes; });
    choose("Start Recording");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(lines()[0], "(Recording)");
    EXPECT_EQ(lines()[3], "Pause Recording [pause]");
    EXPECT_STREQ(menuBar_.iconName(), "tray-recording");
    choose("Pause Recording");
    EXPECT_EQ(lines()[0], "(Paused since 09:00)");
    EXPECT_EQ(lines()[3], paused[3]);
    for (const char* text : {"Open Quorvane", "About Quorvane", "Accessibility", "Quit Quorvane"})
        choose(text);
    EXPECT_THAT(asked_, ElementsAre("window", "about", "quit"));
}

TEST_F(MenuBarContentViewTest, WhereNothingCanBeSeenTheFirstLineSaysWhy) {
    choose("Start Recording");
    int changes = 0;
    const auto changed = menuBar_.changed.subscribe([&] { ++changes; });
    desktop_.setForegroundChannel(
        {.gives = platform::Sight::applications, .obstacle = platform::Obstacle::displayGone});
    scene_.runLoop.playFor(11s);
    EXPECT_GE(changes, 1);
    EXPECT_EQ(lines()[0], "(Can't record: The X server has gone away.)");
    EXPECT_EQ(lines()[3], "Pause Recording [pause]");
    EXPECT_EQ(menuBar_.title(), "Can't record");
    EXPECT_STREQ(menuBar_.iconName(), "tray-blind");
}

TEST_F(MenuBarContentViewTest, PermissionsComeFromTheCacheThatTheOpenedMenuAndTheItemFill) {
    const PermissionStatus none;
    scene_.runLoop.playFor(1s);
    const PermissionStatus granted = checker_.currentStatus();
    ASSERT_NE(granted, none);
    EXPECT_EQ(menuBar_.cachedPermissions(), none);
    menuBar_.appear();
    EXPECT_EQ(menuBar_.cachedPermissions(), granted);
    scene_.runLoop.runPosted();

    desktop_.refuseKeys(granted.inputMonitoring);
    checker_.refreshPermissions();  // somebody else asks
    scene_.runLoop.runPosted();
    EXPECT_EQ(menuBar_.cachedPermissions(), granted);
    choose("Check Permissions Again");
    scene_.runLoop.runPosted();
    EXPECT_NE(menuBar_.cachedPermissions(), granted);
    EXPECT_EQ(menuBar_.cachedPermissions(), checker_.currentStatus());
}

}  // namespace
}  // namespace quorvane
