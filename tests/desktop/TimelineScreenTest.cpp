#include "base/DateText.h"
#include "desktop/support/ApplicationScreen.h"
#include "desktop/support/BusMock.h"
#include "desktop/support/TrayHost.h"
#include "desktop/support/Waiting.h"
#include "store/ProjectTimeAnnotation.h"
#include "support/Matchers.h"
#include "support/Matching.h"

#include <set>

namespace quorvane {
namespace {

/// "Sat, November 21, 2026", as the header has it.
std::string dayLabel(Date day) {
    return localDateText(day, "EEE, ") + longDate(day);
}

/// The main window over today's records: Editor from 12:00 to 13:30 and Mail to 13:45.
class TimelineScreenTest : public ApplicationScreen {
protected:
    TimelineScreenTest() { fillStore(); }

    /// Returns when the window shows the day.
    void start() {
        ApplicationScreen::start([&] { return find("list item", "Editor").has_value(); });
    }

    // --- The store

    void fillStore() {
        auto store = openStore();
        auto& context = store.mainContext();
        insertRecord(context, "Editor", 12, 13.5);
        insertRecord(context, "Mail", 13.5, 13.75);
        for (const char* name : {"Alpha", "Beta", "Gamma", "Delta"}) {
            const auto project = insertProject(context, name);
            if (project->name() != "Delta") assign(context, project, 12, 13);
        }
        context.save();
    }

    static void assign(ModelContext& context, const std::shared_ptr<Project>& project, double start, double end) {
        const auto annotation = std::make_shared<ProjectTimeAnnotation>();
        annotation->startTime = today(start);
        annotation->endTime = today(end);
        annotation->project = project;
        context.insert(annotation);
    }

    /// "Alpha 12:00-13:00", sorted.
    [[nodiscard]] std::set<std::string> assignments() const {
        auto store = openStore();
        std::set<std::string> found;
        for (const auto& annotation : store.mainContext().fetch<ProjectTimeAnnotation>({}))
            found.insert(annotation->project()->name() + localDateText(annotation->startTime(), " HH:mm-") +
                         localDateText(annotation->endTime(), "HH:mm"));
        return found;
    }

    /// Draws a range on the chart, right of the bars.
    void draw(double startHour, double endHour) {
        const auto block = part("list item", "Editor, 12:00 to 13:30").place;
        const auto x = std::to_string(block.right() - 40);
        const auto y = [&](double hour) {
            return std::to_string(block.top() + static_cast<int>((hour - 12) / 1.5 * block.height()));
        };
        xdotool({"mousemove", x, y(startHour), "mousedown", "1", "mousemove", x, y((startHour + endHour) / 2),
                 "mousemove", x, y(endHour), "mouseup", "1"});
    }
};

TEST_F(TimelineScreenTest, ADrawnRangeGoesToAProjectUnlessThreeHaveItsTime) {
    start();
    draw(13.25, 13.75);
    click("list item", "Beta, Not set");
    EXPECT_TRUE(comes("list item", "Project Beta, 13:15 to 13:45"));
    const std::set<std::string> three{"Alpha 12:00-13:00", "Beta 12:00-13:00", "Gamma 12:00-13:00"};
    auto withBeta = three;
    withBeta.insert("Beta 13:15-13:45");
    EXPECT_EQ(assignments(), withBeta);

    draw(12.25, 12.75);
    EXPECT_TRUE(comes("label", "3 projects already cover"));
    click("list item", "Delta, Not set");
    EXPECT_TRUE(application_->hasWritten("该时间段已达到最大项目数量限制（3个）"));
    EXPECT_TRUE(goes("label", "3 projects already cover"));
    EXPECT_EQ(assignments(), withBeta);

    click("list item", "Project Beta, 13:15 to 13:45");
    press("Delete");
    EXPECT_TRUE(goes("list item", "Project Beta, 13:15 to 13:45"));
    EXPECT_TRUE(application_->hasWritten("ProjectTimeAnnotation deleted"));
    EXPECT_EQ(assignments(), three);
}

TEST_F(TimelineScreenTest, TheDetailsOfABlockClassifyIt) {
    start();
    click("list item", "Mail, 13:30 to 13:45");
    // As high as its line, however much the panel said before.
    EXPECT_TRUE(waitUntil([&] { return part("label", "13:30 – 13:45").place.height() < 30; }));
    click("push button", "Edit Category and tags");
    EXPECT_TRUE(focusComesTo("Work"));
    EXPECT_THAT(unnamed(), IsEmpty());
    click("check box", "Work");
    click("push button", "Save");
    EXPECT_TRUE(waitUntil([&] {
        return records() == std::vector<std::string>{"Editor", "Mail 工作", "Quorvane open"};
    }));
}

TEST_F(TimelineScreenTest, RecordingPausesAndAClosedWindowLeavesItBe) {
    const TrayHost tray;  // without one the first closing asks
    start();
    const auto becomes = [&](const std::vector<std::string>& expected) {
        return waitUntil([&] { return records() == expected; });
    };
    EXPECT_TRUE(becomes({"Editor", "Mail", "Quorvane open"}));
    click("push button", "Pause Recording");
    EXPECT_TRUE(comes("label", "Paused"));
    EXPECT_TRUE(becomes({"Editor", "Mail", "Quorvane"}));
    press("ctrl+shift+p");
    EXPECT_TRUE(comes("label", "Recording"));
    EXPECT_TRUE(becomes({"Editor", "Mail", "Quorvane", "Quorvane open"}));

    click("radio button", "Billing");
    press("ctrl+w");
    EXPECT_TRUE(waitUntil([&] { return window() == XCB_WINDOW_NONE; }));
    EXPECT_EQ(ProgramRun(QUORVANE, {}, setting_).wait().status, 0);
    EXPECT_TRUE(comes("push button", "Pause Recording"));
    EXPECT_TRUE(comes("list item", "Editor, 12:00 to 13:30")) << "a new window begins with the timeline";
    EXPECT_TRUE(becomes({"Editor", "Mail", "Quorvane", "Quorvane open"}));
}

TEST_F(TimelineScreenTest, TabGoesRoundEveryControlHasANameAndEscapeLeavesEachSheet) {
    start();
    EXPECT_THAT(unnamed(), IsEmpty());
    const std::string first = "Day timeline, " + dayLabel(today(0)) + ", 2 activities";
    EXPECT_TRUE(focusComesTo(first)) << focus();
    EXPECT_THAT(tabRound(),
                ElementsAre("Another Message", "Automatic", "Automatic", "Create Share Card", "Timeline",
                            "Pause Recording", "Fix, No web addresses", "Settings", "Cloud sync", "About Quorvane",
                            "Previous day", "Next day", "Today", "Day", "Shorter hours", "Taller hours", first));
    press("Down");
    EXPECT_TRUE(focusComesTo("Editor, 12:00 to 13:30, 1h30m")) << focus();
    press("a");
    EXPECT_TRUE(focusComesTo("Start")) << focus();
    EXPECT_THAT(unnamed(), IsEmpty());
    press("Escape");
    EXPECT_TRUE(focusComesTo("Editor, 12:00 to 13:30, 1h30m")) << focus();
    for (const char* keys : {"alt+2", "alt+3"}) {  // the details go, and the keyboard stays with what is shown
        press(keys);
        EXPECT_TRUE(waitUntil([&] { return focus().starts_with(localDateText(today(0), "EEE, ")); })) << focus();
        EXPECT_THAT(unnamed(), IsEmpty());
    }
}

TEST_F(TimelineScreenTest, TheDayIsDarkInChineseOrAtTwiceTheSizeWhereTheDesktopIs) {
    const auto ground = [&](unsigned color) {
        const auto place = part("frame", "Quorvane").place;
        return waitUntil([&] { return pixel(QPoint(place.center().x(), place.top() + 2)) == color; });
    };
    const std::string path = "/org/freedesktop/portal/desktop";
    const std::string interface = "org.freedesktop.portal.Settings";
    BusMock portal("org.freedesktop.portal.Desktop", path);
    const auto setColorScheme = [&](unsigned scheme) {
        portal.setAnswer(path, interface, "ReadAll", "as", "a{sa{sv}}",
                         "ret = {'org.freedesktop.appearance': {'color-scheme': dbus.UInt32(" + std::to_string(scheme) +
                             ")}}");
        portal.emitSignal(path, interface, "SettingChanged", "ssv",
                          {"org.freedesktop.appearance", "color-scheme", scheme});
    };
    setColorScheme(2);
    start();
    EXPECT_TRUE(ground(0xF5F6F8));
    setColorScheme(1);
    EXPECT_TRUE(ground(0x111419));

    application_.reset();
    setting_.environment["LANGUAGE"] = "zh";
    start();
    EXPECT_TRUE(ground(0x111419));
    EXPECT_TRUE(comes("radio button", "时间线"));

    application_.reset();
    setting_.environment.erase("LANGUAGE");
    setting_.environment["QT_SCALE_FACTOR"] = "2";
    scale_ = 2;
    start();
    xdotool({"windowsize", "--sync", std::to_string(window()), "1280", "840"});
    ASSERT_TRUE(waitUntil([&] { return !find("label", "Recording"); }));
    click("radio button", "Billing");
    EXPECT_TRUE(comes("push button", "Export Bill"));
    press("ctrl+1");
    // In so low a window noon may lie above what shows.
    const auto chart = part("frame", "Quorvane").place.center() * scale_;
    xdotool({"mousemove", std::to_string(chart.x()), std::to_string(chart.y()), "click", "--repeat", "20", "4"});
    click("list item", "Project Alpha");
    press("a");  // there is no room beside the chart: a sheet
    EXPECT_TRUE(waitUntil([&] { return focus() == "Start"; })) << focus();
    press("Escape");
    EXPECT_TRUE(waitUntil([&] { return focus().starts_with("Project Alpha"); })) << focus();
}

}  // namespace
}  // namespace quorvane
