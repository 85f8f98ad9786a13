#include "base/Calendar.h"
#include "base/DateText.h"
#include "desktop/support/ApplicationScreen.h"
#include "desktop/support/SettingsPortal.h"
#include "desktop/support/TrayHost.h"
#include "desktop/support/Waiting.h"
#include "platform/Clock.h"
#include "store/ProjectTimeAnnotation.h"
#include "support/Matchers.h"

#include <csignal>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <set>

using testing::ElementsAre;
using testing::IsEmpty;

namespace quorvane {
namespace {

std::string monthName(Date day) {
    constexpr const char* names[] = {"January", "February", "March",     "April",   "May",      "June",
                                     "July",    "August",   "September", "October", "November", "December"};
    return names[Calendar::current().civilDate(day).month - 1];
}

/// "Sat, November 21, 2026", as the header has it.
std::string dayLabel(Date day) {
    return localDateText(day, "EEE, ") + monthName(day) + localDateText(day, " d, yyyy");
}

/// The main window over today's records: Editor from 12:00 to 13:30 and Mail to 13:45.
class MainWindowTest : public ApplicationScreen {
protected:
    MainWindowTest() { fillStore(); }

    /// Returns when the window shows the day.
    void start() {
        ApplicationScreen::start([&] { return find("list item", "Editor").has_value(); });
    }

    // --- The store

    void fillStore() {
        auto store = openStore();
        auto& context = store.mainContext();
        const auto add = [&](const std::string& name, double start, double end) {
            context.insert(std::make_shared<ActivityRecord>(ActivityRecord::Values{.startTime = today(start),
                                                                                   .endTime = today(end),
                                                                                   .appBundleId = "org.example." + name,
                                                                                   .appName = name}));
        };
        add("Editor", 12, 13.5);
        add("Mail", 13.5, 13.75);
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

    /// Oldest first: "Editor 工作", "Quorvane open".
    [[nodiscard]] std::vector<std::string> records() const {
        auto store = openStore();
        std::vector<std::string> found;
        for (const auto& record :
             store.mainContext().fetch<ActivityRecord>({.sort = {ascending(&ActivityRecord::startTime)}})) {
            found.push_back(record->appName().value_or(""));
            if (const auto category = record->category()) found.back() += " " + *category;
            if (!record->endTime()) found.back() += " open";
        }
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

TEST_F(MainWindowTest, SectionsDatesAndZoomFollowPointerAndKeys) {
    start();
    click("radio button", "Billing");
    EXPECT_TRUE(comes("push button", "Export Bill"));
    press("ctrl+1");
    EXPECT_TRUE(goes("push button", "Export Bill"));
    press("ctrl+2");
    EXPECT_TRUE(comes("push button", "Export Bill"));
    press("ctrl+1");

    const Date now = today(0);
    const auto& calendar = Calendar::current();
    click("push button", "Previous day");
    EXPECT_TRUE(comes("label", dayLabel(calendar.addingDays(-1, now))));
    press("alt+Left");
    EXPECT_TRUE(comes("label", dayLabel(calendar.addingDays(-2, now))));
    pressOften("alt+Right", 3);
    EXPECT_TRUE(comes("label", dayLabel(calendar.addingDays(1, now))));
    click("push button", "Today");
    EXPECT_TRUE(comes("label", dayLabel(now)));

    // A step back from the end shows that the presses beyond it changed nothing.
    const struct {
        const char* key;
        int times;
        const char* height;
    } zooms[] = {{"ctrl+plus", 3, "360"}, {"ctrl+plus", 2, "360"}, {"ctrl+minus", 1, "300"}, {"ctrl+minus", 5, "30"},
                 {"ctrl+minus", 2, "30"}, {"ctrl+plus", 1, "90"},  {"ctrl+0", 1, "180"}};
    for (const auto& zoom : zooms) {
        pressOften(zoom.key, zoom.times);
        EXPECT_TRUE(comes("label", fmt::format("Hour height {} pixels", zoom.height))) << zoom.key;
    }
}

TEST_F(MainWindowTest, ADayOfAWeekAndOfAMonthOpens) {
    start();
    const auto calendar = Calendar::mondayFirst(Calendar::current());
    const Date monday = calendar.addingDays(-7, calendar.week(today(0)).start);
    press("alt+2", "alt+Left");
    EXPECT_TRUE(comes("push button", "Previous week"));
    click("push button", fmt::format("Mon, {:.3} {},", monthName(monday), localDateText(monday, "d")));
    EXPECT_TRUE(comes("label", dayLabel(monday)));

    const bool isFirst = calendar.civilDate(monday).day == 1;
    press("alt+3");
    EXPECT_TRUE(comes("push button", "Previous month"));
    press(isFirst ? "Right" : "Left", "Return");
    EXPECT_TRUE(comes("label", dayLabel(calendar.addingDays(isFirst ? 1 : -1, monday))));
}

TEST_F(MainWindowTest, ADrawnRangeGoesToAProjectUnlessThreeHaveItsTime) {
    start();
    draw(13.25, 13.75);
    click("push button", "Beta");
    EXPECT_TRUE(comes("list item", "Project Beta, 13:15 to 13:45"));
    const std::set<std::string> three{"Alpha 12:00-13:00", "Beta 12:00-13:00", "Gamma 12:00-13:00"};
    auto withBeta = three;
    withBeta.insert("Beta 13:15-13:45");
    EXPECT_EQ(assignments(), withBeta);

    draw(12.25, 12.75);
    EXPECT_TRUE(comes("label", "3 projects already cover"));
    click("push button", "Delta");
    EXPECT_TRUE(application_->hasWritten("该时间段已达到最大项目数量限制（3个）"));
    EXPECT_TRUE(goes("label", "3 projects already cover"));
    EXPECT_EQ(assignments(), withBeta);

    click("list item", "Project Beta, 13:15 to 13:45");
    press("Delete");
    EXPECT_TRUE(goes("list item", "Project Beta, 13:15 to 13:45"));
    EXPECT_TRUE(application_->hasWritten("ProjectTimeAnnotation deleted"));
    EXPECT_EQ(assignments(), three);
}

TEST_F(MainWindowTest, TheDetailsOfABlockAssignClassifyAndDeleteIt) {
    start();
    click("list item", "Mail, 13:30 to 13:45");
    // As high as its line, however much the panel said before.
    EXPECT_TRUE(waitUntil([&] { return part("label", "13:30 – 13:45").place.height() < 30; }));
    click("push button", "Assign to Project");
    EXPECT_TRUE(comes("alert message", "Selected time 13:30 to 13:45"));
    press("Escape");
    EXPECT_TRUE(comes("label", "13:30 – 13:45"));

    click("push button", "Edit Category and tags");
    click("check box", "工作");
    click("push button", "Save");
    EXPECT_TRUE(waitUntil([&] {
        return records() == std::vector<std::string>{"Editor", "Mail 工作", "Quorvane open"};
    }));
    click("push button", "Delete this activity record");
    EXPECT_TRUE(application_->hasWritten("ActivityRecord deleted: Mail"));
    EXPECT_TRUE(goes("list item", "Mail, 13:30 to 13:45"));
    EXPECT_THAT(records(), ElementsAre("Editor", "Quorvane open"));
}

TEST_F(MainWindowTest, RecordingPausesAndAClosedWindowLeavesItBe) {
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
    EXPECT_TRUE(comes("list item", "Editor, 12:00 to 13:30"));
    EXPECT_FALSE(find("push button", "Export Bill"));
    press("ctrl+w");
    EXPECT_TRUE(waitUntil([&] { return window() == XCB_WINDOW_NONE; }));
    application_->sendSignal(SIGTERM);
    const auto printed = application_->wait().out;
    const auto count = [&](std::string_view text) {
        int found = 0;
        for (auto at = printed.find(text); at != std::string::npos; at = printed.find(text, at + 1))
            ++found;
        return found;
    };
    EXPECT_EQ(count("ActivityTracker: Starting tracking"), 2);
}

TEST_F(MainWindowTest, TabGoesRoundEveryControlHasANameAndEscapeLeavesEachSheet) {
    start();
    EXPECT_THAT(unnamed(), IsEmpty());
    const std::string first = "Day timeline, " + dayLabel(today(0)) + ", 2 activities";
    EXPECT_TRUE(focusComesTo(first)) << focus();
    EXPECT_THAT(tabRound(), ElementsAre("Another Message", "Automatic", "Automatic", "Create Share Card", "Timeline",
                                        "Pause Recording", "Settings", "Cloud sync", "About Quorvane", "Previous day",
                                        "Next day", "Today", "Day", "Shorter hours", "Taller hours", first));

    press("Down");
    EXPECT_TRUE(waitUntil([&] { return focus() == "Editor, 12:00 to 13:30, 1h30m"; }));
    // In their order, each opened from where the one before was left.
    const struct {
        const char* keys;
        const char* focused;  ///< first, in what has opened
        const char* left;     ///< focused after Escape
    } places[] = {{"F1", "Libraries and Licences…", "Editor"}, {"a", "Start", "Editor"}};
    for (const auto& place : places) {
        SCOPED_TRACE(place.keys);
        press(place.keys);
        EXPECT_TRUE(waitUntil([&] { return focus() == place.focused; })) << focus();
        EXPECT_THAT(unnamed(), IsEmpty());
        press("Escape");
        EXPECT_TRUE(waitUntil([&] { return focus().starts_with(place.left); })) << focus();
    }

    click("push button", "Edit Category and tags");
    EXPECT_TRUE(waitUntil([&] { return focus() == "工作"; }));
    EXPECT_THAT(unnamed(), IsEmpty());
    press("Escape");
    EXPECT_TRUE(waitUntil([&] { return focus() == "Edit Category and tags"; }));
    for (const char* keys : {"alt+2", "alt+3"}) {  // the details go, and the keyboard stays with what is shown
        press(keys);
        EXPECT_TRUE(waitUntil([&] { return focus().starts_with(localDateText(today(0), "EEE, ")); })) << focus();
        EXPECT_THAT(unnamed(), IsEmpty());
    }
}

TEST_F(MainWindowTest, TheDayIsDarkInChineseOrAtTwiceTheSizeWhereTheDesktopIs) {
    const auto ground = [&](unsigned color) {
        const auto place = part("frame", "Quorvane").place;
        return waitUntil([&] { return pixel(QPoint(place.center().x(), place.top() + 2)) == color; });
    };
    SettingsPortal portal(false);
    start();
    EXPECT_TRUE(ground(0xF5F6F8));
    portal.setDark(true);
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
