#include "shell/chart/DayCells.h"
#include "shell/chart/MonthView.h"
#include "shell/chart/WeekPainter.h"
#include "shell/chart/WeekView.h"
#include "shell/look/RowList.h"
#include "shell/look/Theme.h"
#include "shell/support/ScreenTest.h"
#include "timeline/AppColorPalette.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>
#include <fmt/format.h>

namespace quorvane {
namespace {

/// `over` on top of `ground`.
QColor blend(const QColor& over, double opacity, const QColor& ground) {
    const auto mix = [&](int a, int b) { return static_cast<int>(a * opacity + b * (1 - opacity)); };
    return {mix(over.red(), ground.red()), mix(over.green(), ground.green()), mix(over.blue(), ground.blue())};
}

MATCHER_P(isAbout, color, "") {
    *result_listener << arg.name().toStdString() << " and not " << color.name().toStdString();
    return std::abs(arg.red() - color.red()) + std::abs(arg.green() - color.green()) +
               std::abs(arg.blue() - color.blue()) <=
           9;
}

/// Week and month on Wednesday, 8 April 2026, at 17:00; the month begins on a Wednesday.
class OverviewsTest : public ScreenTest {
protected:
    OverviewsTest() : ScreenTest("2026-04-08 17:00:00") {}
    ~OverviewsTest() override {
        applyTheme(Theme::light());
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }

    void record(const char* app, const char* start, const char* end) {
        aRecord().app(app).from(fmt::format("2026-04-{}", start)).to(fmt::format("2026-04-{}", end)).in(context());
    }
    void assign(const char* project, const char* tone, const char* start, const char* end) {
        ScreenTest::assign(insertProject(context(), project), fmt::format("2026-04-{}", start),
                           fmt::format("2026-04-{}", end))
            ->project()
            ->color = tone;
    }

    void load() {
        context().save();
        activity.load();
        settle();
    }
    /// So wide that a column has 140.
    void show(QWidget& view) {
        activity.chart().setViewMode(&view == &week ? TimelineViewMode::week : TimelineViewMode::month);
        ScreenTest::show(view, {1062, 776});
    }
    static DayCells& canvas(const QWidget& view) { return *partsOf<DayCells>(view).front(); }
    template <class Part>
    static std::vector<Part*> partsOf(const QWidget& view) {
        std::vector<Part*> parts;
        for (auto* const child : view.findChildren<QWidget*>())
            if (auto* const part = dynamic_cast<Part*>(child)) parts.push_back(part);
        return parts;
    }
    static void tap(DayCells& cells, QPointF from, QPointF to) {
        QMouseEvent press(QEvent::MouseButtonPress, from, cells.mapToGlobal(from), Qt::LeftButton, Qt::LeftButton, {});
        QMouseEvent release(QEvent::MouseButtonRelease, to, cells.mapToGlobal(to), Qt::LeftButton, {}, {});
        QApplication::sendEvent(&cells, &press);
        QApplication::sendEvent(&cells, &release);
    }
    void type(QWidget& widget, const std::vector<Qt::Key>& keys) {
        for (const Qt::Key key : keys) {
            QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
            QApplication::sendEvent(&widget, &press);
            settle();
        }
    }
    /// The day that was opened, "2026-04-07"; the mode while none was.
    std::string opened() {
        if (activity.chart().currentViewMode() != TimelineViewMode::day) return "none";
        const auto day = timelineCalendar().civilDate(activity.chart().selectedDate());
        return fmt::format("{}-{:02}-{:02}", day.year, day.month, day.day);
    }
    void closeDay(const QWidget& view) {
        activity.chart().selectDate(runLoop.now());
        activity.chart().setViewMode(&view == &week ? TimelineViewMode::week : TimelineViewMode::month);
        settle();
    }

    CategoryTagManager categories{defaults, console};
    MyActivityView activity{store.container(), runLoop, categories, console};
    WeekView week{activity, localization, console};
    MonthView month{activity, localization, console};
};

TEST_F(OverviewsTest, ATapOpensItsDayAndADragFromDayToDayOpensNone) {
    load();
    constexpr double third = 32 + 143.4 * 2 + 70;  // weeks begin on Sunday: three cells of the month are blank
    constexpr double fourth = third + 143.4;
    struct Row {
        QWidget& view;
        QPointF from;
        QPointF to;
        const char* expected;
    };
    const Row rows[] = {
        {week, {66 + 140 + 5, 300}, {66 + 140 + 90, 400}, "2026-04-07"},
        {week, {66 + 140 * 6 + 70, 20}, {66 + 140 * 6 + 70, 20}, "2026-04-12"},
        {week, {66 + 70, 300}, {66 + 140 + 70, 300}, "none"},
        {week, {40, 300}, {40, 300}, "none"},
        {month, {third, 80}, {third, 80}, "none"},
        {month, {fourth, 80}, {fourth, 80}, "2026-04-01"},
        {month, {fourth, 80 + 91 * 2}, {fourth, 290}, "2026-04-15"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(fmt::format("from {}, {}", row.from.x(), row.from.y()));
        closeDay(row.view);
        show(row.view);
        tap(canvas(row.view), row.from, row.to);
        EXPECT_EQ(opened(), row.expected);
        row.view.hide();
    }
}

TEST_F(OverviewsTest, ArrowsMoveFromTheSelectedDayAndEnterOrSpaceOpensOne) {
    load();
    using enum Qt::Key;
    struct Row {
        QWidget& view;
        std::vector<Qt::Key> keys;
        const char* expected;
        Qt::LayoutDirection direction = Qt::LeftToRight;
    };
    const Row rows[] = {
        {week, {Key_Return}, "2026-04-08"},
        {week, {Key_Right, Key_Space}, "2026-04-09"},
        {week, {Key_Right, Key_Right, Key_Right, Key_Right, Key_Right, Key_Enter}, "2026-04-13"},
        {week, {Key_Up, Key_Return}, "2026-04-08"},                      // is for scrolling
        {week, {Key_Right, Key_Return}, "2026-04-09", Qt::RightToLeft},  // time runs one way
        {week, {Key_Left, Key_Left, Key_Left, Key_Return}, "2026-04-05"},
        {month, {Key_Up, Key_Return}, "2026-04-01"},
        {month, {Key_Up, Key_Up, Key_Left, Key_Return}, "2026-03-24"},
        {month, {Key_Down, Key_Left, Key_Return}, "2026-04-14"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.keys));
        QApplication::setLayoutDirection(row.direction);
        activity.chart().selectDate(at("2026-04-01 12:00:00"));
        show(row.view);
        closeDay(row.view);
        type(canvas(row.view), row.keys);
        EXPECT_EQ(opened(), row.expected);
        row.view.hide();
    }
}

TEST_F(OverviewsTest, DaysAndSumsAreReadByAssistiveTechnology) {
    record("Editor", "06 23:00:00", "07 01:30:00");
    record("Mail", "07 10:00:00", "07 10:04:00");
    record("Mail", "08 16:00:00", "08 17:30:00");  // beyond now
    assign("Orchard", "sky", "07 00:00:00", "07 03:00:00");
    load();
    show(week);
    EXPECT_THAT(namesOfParts(canvas(week)),
                ElementsAre("Mon, Apr 6, 1.0 hours recorded", "Tue, Apr 7, 1.6 hours recorded",
                            "Wed, Apr 8, 1.0 hours recorded", "Thu, Apr 9, 0.0 hours recorded",
                            "Fri, Apr 10, 0.0 hours recorded", "Sat, Apr 11, 0.0 hours recorded",
                            "Sun, Apr 12, 0.0 hours recorded"));
    EXPECT_THAT(accessibleNames(week, QAccessible::ListItem),
                ElementsAre("Editor, 2.5 hours, 70.1 percent", "Mail, 1.1 hours, 29.9 percent",
                            "Orchard, 3.0 hours, 100.0 percent"));

    closeDay(month);
    EXPECT_EQ(activity.chart().dateLabel(), "2026/4");
    show(month);
    const auto days = namesOfParts(canvas(month));
    ASSERT_EQ(days.size(), 30);
    EXPECT_EQ(days[5], "Mon, Apr 6, 1 entry");
    EXPECT_EQ(days[6], "Tue, Apr 7, 2 entries");
    EXPECT_EQ(days[8], "Thu, Apr 9, nothing recorded");

    auto* const tuesday = QAccessible::queryAccessibleInterface(&canvas(month))->child(6);
    EXPECT_EQ(tuesday->role(), QAccessible::Button);
    tuesday->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(opened(), "2026-04-07");
}

TEST_F(OverviewsTest, BarsStandAtTheirHoursInTheirColours) {
    record("Editor", "07 10:00:00", "07 14:00:00");
    assign("Orchard", "sky", "07 10:00:00", "07 14:00:00");
    load();
    show(week);
    for (const bool isDark : {false, true}) {
        SCOPED_TRACE(isDark ? "dark" : "light");
        applyTheme(isDark ? Theme::dark() : Theme::light());
        settle();
        const QImage image = canvas(week).grab().toImage();
        const auto at = [&](int x, double hour) { return image.pixelColor(206 + x, static_cast<int>(52 + 20 * hour)); };
        const QColor panel = at(35, 9.5);
        const QColor editor = toQColor(AppColorPalette::appColor("org.example.editor", {}));
        EXPECT_THAT(at(35, 13.5), isAbout(blend(editor, 0.6, panel)));
        EXPECT_THAT(at(105, 13.5), isAbout(blend(toQColor(AppColorPalette::projectColor("sky", false)), 0.7, panel)));
        EXPECT_THAT(at(105, 14.5), isAbout(panel));
        EXPECT_THAT(at(-105, 13.5), isAbout(panel)) << "another day";
    }
}

TEST_F(OverviewsTest, EachMinuteMovesTheLineAndANewDayRebuilds) {
    load();
    show(week);
    const auto lineOf = [&](int day, double hour) {
        return canvas(week).grab().toImage().pixelColor(66 + 140 * day + 70, static_cast<int>(51 + 20 * hour));
    };
    EXPECT_THAT(lineOf(2, 17), isAbout(theme().accent));
    runLoop.playUntil(at("2026-04-08 20:00:00"));
    settle();
    EXPECT_THAT(lineOf(2, 20), isAbout(theme().accent));
    EXPECT_THAT(lineOf(2, 17), Not(isAbout(theme().accent)));
    runLoop.playUntil(at("2026-04-09 06:00:00"));
    settle();
    EXPECT_THAT(lineOf(3, 6), isAbout(theme().accent));
}

TEST_F(OverviewsTest, AHiddenViewDoesNothingAndCatchesUpWhenShown) {
    load();
    runLoop.playFor(1s);
    struct Row {
        QWidget& view;
        int part;
        const char* day;
        const char* one;
        const char* both;
    };
    const Row rows[] = {{week, 1, "07", "Tue, Apr 7, 2.0 hours recorded", "Tue, Apr 7, 3.0 hours recorded"},
                        {month, 5, "06", "Mon, Apr 6, 1 entry", "Mon, Apr 6, 2 entries"}};
    for (const Row& row : rows) {
        const auto name = [&] { return namesOfParts(canvas(row.view))[static_cast<std::size_t>(row.part)]; };
        const auto record = [&](const char* app, int from, int to) {
            this->record(app, fmt::format("{} {}:00:00", row.day, from).c_str(),
                         fmt::format("{} {}:00:00", row.day, to).c_str());
            context().save();
            settle();
        };
        const int timers = runLoop.pendingTimers();
        show(row.view);
        record("Editor", 10, 12);
        EXPECT_EQ(name(), row.one);
        row.view.hide();
        EXPECT_EQ(runLoop.pendingTimers(), timers);
        record("Mail", 13, 14);
        EXPECT_EQ(name(), row.one);
        row.view.show();
        EXPECT_EQ(name(), row.both);
        row.view.hide();
    }
}

TEST_F(OverviewsTest, AnyMonthIsReadWhenItIsShownAndLetGoAfterwards) {
    constexpr int many = 6000;
    for (int i = 0; i < many; ++i) {
        const Date start = at("2025-06-03 08:00:00") + i * 5min;
        context().insert(std::make_shared<ActivityRecord>(
            ActivityRecord::Values{.startTime = start, .endTime = start + 299s, .appName = "Editor"}));
    }
    record("Editor", "07 10:00:00", "07 12:00:00");
    load();
    int left = 0;
    const auto subscription = activity.leftMany.subscribe([&] { ++left; });
    show(month);
    EXPECT_EQ(namesOfParts(canvas(month))[6], "Tue, Apr 7, 1 entry");
    runLoop.holdBackground();
    activity.chart().selectDate(at("2025-06-20 12:00:00"));
    settle();
    EXPECT_EQ(namesOfParts(canvas(month))[6], "Tue, Apr 7, 1 entry") << "no month without its records";
    runLoop.releaseBackground();
    settle();
    EXPECT_EQ(activity.records().size(), static_cast<std::size_t>(many));
    EXPECT_EQ(namesOfParts(canvas(month))[1], "Mon, Jun 2, nothing recorded");
    EXPECT_EQ(namesOfParts(canvas(month))[2], "Tue, Jun 3, 15.9 hours recorded") << "all of them short";
    activity.chart().openDay(at("2025-06-04 12:00:00"));
    settle();
    EXPECT_EQ(left, 1);
    EXPECT_LT(activity.records().capacity(), static_cast<std::size_t>(many) / 10);
    EXPECT_FALSE(activity.chart().processedRecords().empty());
}

TEST_F(OverviewsTest, ColumnsThatDoNotFitScrollSidewaysAndTheSelectedDayIsOnScreen) {
    load();
    activity.chart().selectDate(at("2026-04-12 12:00:00"));
    activity.chart().setViewMode(TimelineViewMode::week);
    week.resize(500, 600);
    week.show();
    settle();
    const QRect sunday = canvas(week).partRectangle(6);
    EXPECT_EQ(sunday.width(), 100);
    EXPECT_LE(canvas(week).mapTo(&week, sunday.topRight()).x(), 500);
    for (const auto* rows : partsOf<RowList>(week))
        EXPECT_LE(rows->width(), 500 - 32);
}

}  // namespace
}  // namespace quorvane
