#include "shell/chart/DayChartView.h"

#include "platform/simulated/SimulatedSession.h"
#include "shell/chart/DayChartParts.h"
#include "shell/look/Motion.h"
#include "shell/look/Theme.h"
#include "shell/support/ScreenTest.h"
#include "store/Absence.h"
#include "support/Mapped.h"
#include "timeline/PassedRecords.h"

#include <QMenu>
#include <QScrollBar>
#include <QWheelEvent>

namespace quorvane {

void PrintTo(const QRect& rectangle, std::ostream* out) {
    *out << rectangle.x() << "," << rectangle.y() << " " << rectangle.width() << "x" << rectangle.height();
}

namespace {

/// Counts how often a widget is painted.
class PaintCount : public QObject {
public:
    explicit PaintCount(QWidget& widget) { widget.installEventFilter(this); }
    int take() { return std::exchange(count_, 0); }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++count_;
        return false;
    }

private:
    int count_ = 0;
};

/// A chart of 510x400 of Monday, 2 March 2026, at noon: Editor from 9 to 10, Mail from 10:30 to 11, and a bar of the
/// project "Web" from 9 to 10. Hours 9 and 10 are 180 high, the others 16.
class DayChartViewTest : public ScreenTest {
protected:
    DayChartViewTest() {
        aRecord().from("09:00:00").to("10:00:00").app("Editor").title("Draft").in(context());
        aRecord().from("10:30:00").to("11:00:00").app("Mail").in(context());
        assign(insertProject(context(), "Web"), "09:00:00", "10:00:00");
        context().save();
        passAllRecords(context(), chart);
        chart.appear();
        show(view, {510 + DayChartView::besideChart, 400});
        view.verticalScrollBar()->setValue(0);
        view.setFocus(Qt::OtherFocusReason);
    }
    void pointer(QEvent::Type type, QPoint point, Qt::MouseButtons buttons) {
        const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, point, view.viewport()->mapToGlobal(point), button, buttons, Qt::NoModifier);
        QApplication::sendEvent(view.viewport(), &event);
    }
    void press(QPoint point) { pointer(QEvent::MouseButtonPress, point, Qt::LeftButton); }
    void move(QPoint point, Qt::MouseButtons buttons) { pointer(QEvent::MouseMove, point, buttons); }
    void release(QPoint point) { pointer(QEvent::MouseButtonRelease, point, Qt::NoButton); }
    void click(QPoint point) {
        press(point);
        release(point);
    }
    static void key(Qt::Key code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        quorvane::press(code, modifiers);
    }
    void wheel(int angle, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
        QWheelEvent event(QPointF(200, 100), view.mapToGlobal(QPointF(200, 100)), {}, {0, angle}, Qt::NoButton,
                          modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view.viewport(), &event);
    }
    int y(double hour) const { return qRound(chart.layout().yPosition(hour)) - view.verticalScrollBar()->value(); }
    std::string chosen() const {
        if (chart.selectedProjectAnnotation()) return "bar";
        return chart.selectedActivity() ? chart.selectedActivity()->appName : "nothing";
    }
    QRect barFrame() const { return view.parts().toViewport(view.parts().scene.bars.front().frame).toAlignedRect(); }
    DayChartTooltip& tooltip() const { return *view.parts().tooltip; }

    DayTimelineChart chart{context(), runLoop, console};
    platform::SimulatedApplicationIcons icons;
    DayChartView view{chart, runLoop, icons, localization};
};

TEST_F(DayChartViewTest, AClickChoosesABlockOrABarAndAMissLetsGo) {
    click({100, y(9.5)});
    EXPECT_EQ(chosen(), "Editor");
    EXPECT_EQ(view.selectedBlock(), QRect(50, y(9), 460, 180));
    view.verticalScrollBar()->setValue(100);
    click({100, y(10.75)});
    EXPECT_EQ(chosen(), "Mail");
    click({200, y(9.8)});
    EXPECT_EQ(chosen(), "bar");
    EXPECT_TRUE(view.selectedBlock().isNull());
    click({100, y(10.25)});
    EXPECT_EQ(chosen(), "nothing");
}

TEST_F(DayChartViewTest, AGapIsReachedAnsweredAndReadLikeABlock) {
    const auto absence = std::make_shared<Absence>();
    absence->startTime = at("09:50:00");
    absence->endTime = at("10:30:00");
    context().insert(absence);
    context().save();
    settle();
    click({100, y(10.25)});
    ASSERT_TRUE(chart.selectedGap());
    auto* list = QAccessible::queryAccessibleInterface(&view);
    EXPECT_EQ(list->focusChild()->text(QAccessible::Name).toStdString(), "Away 10:00 to 10:30, 30m");
    key(Qt::Key_Down);
    EXPECT_EQ(chosen(), "Mail");
    key(Qt::Key_Up);
    ASSERT_TRUE(chart.selectedGap());
    key(Qt::Key_A);
    EXPECT_EQ(chart.selectedTimeRange(), (TimeRange{10, 10.5}));
    key(Qt::Key_Escape);
    key(Qt::Key_Delete);
    EXPECT_TRUE(absence->isLeftEmpty());
    EXPECT_TRUE(view.parts().scene.gaps.front().isLeftEmpty);
}

TEST_F(DayChartViewTest, WhatOverlapsIsChosenAndFoundInItsLane) {
    aRecord().from("09:30:00").to("09:45:00").app("Chat").in(context());
    context().save();
    passAllRecords(context(), chart);
    settle();
    click({400, y(9.6)});
    EXPECT_EQ(chosen(), "Chat");
    EXPECT_EQ(view.selectedBlock(), QRect(281, y(9.5), 229, 45));
    click({100, y(9.6)});
    EXPECT_EQ(view.selectedBlock(), QRect(50, y(9), 229, 180));
    key(Qt::Key_Down);
    EXPECT_EQ(chosen(), "Chat");
    auto* list = QAccessible::queryAccessibleInterface(&view);
    const auto found = [&](double hour) {
        const QPoint point = view.viewport()->mapToGlobal(QPoint(400, y(hour)));
        return list->childAt(point.x(), point.y());
    };
    EXPECT_EQ(found(9.6), list->child(1));
    EXPECT_EQ(found(9.9), nullptr);
}

TEST_F(DayChartViewTest, ADragDrawsARangeWithItsTooltipAndEscapeDropsIt) {
    press({400, y(9.25)});
    move({403, y(9.25) + 9}, Qt::LeftButton);
    EXPECT_FALSE(chart.selection());
    move({420, y(10)}, Qt::LeftButton);
    ASSERT_TRUE(chart.selection());
    EXPECT_TRUE(tooltip().isVisible());
    EXPECT_THAT(tooltip().lines(), ElementsAre("Time: 09:15 – 10:00", "Pointer at 1.8 h"));
    EXPECT_EQ(tooltip().card().width(), 200);
    EXPECT_TRUE(view.viewport()->rect().contains(tooltip().card()));
    key(Qt::Key_Escape);
    release({420, y(10)});
    EXPECT_FALSE(chart.selection());
    EXPECT_FALSE(chart.selectedTimeRange());
    EXPECT_FALSE(tooltip().isVisible());

    press({400, y(9.25)});
    move({420, y(10)}, Qt::LeftButton);
    release({420, y(10)});
    EXPECT_EQ(chart.selectedTimeRange(), (TimeRange{9.25, 10}));
    EXPECT_FALSE(tooltip().isVisible());
    key(Qt::Key_Escape);
    EXPECT_FALSE(chart.selectedTimeRange());

    press({400, y(9.25)});
    chart.stepDate(1);
    move({420, y(10)}, Qt::LeftButton);
    release({420, y(10)});
    EXPECT_FALSE(chart.selectedTimeRange()) << "a drag that began on another day";
}

TEST_F(DayChartViewTest, ADragNearTheEdgeScrollsAndGoesOn) {
    press({400, 200});
    move({400, 395}, Qt::LeftButton);
    const double before = chart.selection()->end.y;
    view.parts().scrollWhileDragging();
    EXPECT_GT(view.verticalScrollBar()->value(), 0);
    EXPECT_EQ(chart.selection()->end.y, before + view.verticalScrollBar()->value());
    release({400, 395});
    EXPECT_FALSE(view.parts().dragScroll.isActive());
}

TEST_F(DayChartViewTest, TheTooltipTellsOfTheBlockUnderThePointer) {
    move({100, y(9.5)}, Qt::NoButton);
    EXPECT_THAT(tooltip().lines(), ElementsAre("Editor", "Draft", "Duration: 1.0 h"));
    EXPECT_EQ(tooltip().card().top(), y(9) + 20);
    move({100, y(10.25)}, Qt::NoButton);
    EXPECT_FALSE(tooltip().isVisible());
}

TEST_F(DayChartViewTest, TheCloseCircleOfTheChosenBarDeletesIt) {
    const QPoint corner = barFrame().topRight() + QPoint(8, -8);  // beside the bar
    click(corner);
    EXPECT_EQ(chart.projectAnnotations().size(), 1);
    click(barFrame().center());
    EXPECT_EQ(chosen(), "bar");
    click(corner);
    settle();
    EXPECT_TRUE(chart.projectAnnotations().empty());
    EXPECT_TRUE(context().fetch<ProjectTimeAnnotation>().empty());
}

TEST_F(DayChartViewTest, KeysMoveBetweenBlocksAndBarsAssignAndDelete) {
    const std::pair<Qt::Key, const char*> rows[] = {
        {Qt::Key_Down, "Editor"},    {Qt::Key_Down, "Mail"},     {Qt::Key_Right, "Mail"},   {Qt::Key_Up, "Editor"},
        {Qt::Key_Right, "bar"},      {Qt::Key_Left, "Editor"},   {Qt::Key_Right, "bar"},    {Qt::Key_Down, "Mail"},
        {Qt::Key_Escape, "nothing"}, {Qt::Key_Return, "Editor"}, {Qt::Key_Delete, "Editor"}};
    for (const auto& [code, expected] : rows) {
        SCOPED_TRACE(QKeySequence(code).toString().toStdString());
        key(code);
        EXPECT_EQ(chosen(), expected);
    }
    key(Qt::Key_A);
    EXPECT_EQ(chart.selectedTimeRange(), (TimeRange{9, 10}));
    key(Qt::Key_Escape);
    key(Qt::Key_Escape);
    key(Qt::Key_A);
    EXPECT_EQ(chart.selectedTimeRange(), (TimeRange{11, 11.25}));
    key(Qt::Key_Escape);
    chart.select(view.parts().scene.bars.front().annotation);
    key(Qt::Key_Backspace);
    EXPECT_TRUE(chart.projectAnnotations().empty());
    EXPECT_EQ(context().fetch<ActivityRecord>().size(), 2);
    chart.stepDate(-1);
    key(Qt::Key_Home);
    EXPECT_EQ(chart.selectedDate(), runLoop.now());
}

TEST_F(DayChartViewTest, TheChosenBlockIsKeptInView) {
    for (int i = 0; i < 4; ++i)
        chart.zoomIn();
    view.verticalScrollBar()->setValue(0);
    key(Qt::Key_End);
    key(Qt::Key_Up);  // from none: the last
    EXPECT_EQ(chosen(), "Mail");
    EXPECT_LE(view.selectedBlock().bottom(), 400);
    EXPECT_EQ(view.selectedBlock().height(), 180);
    key(Qt::Key_PageUp);
    EXPECT_TRUE(view.selectedBlock().isNull() || view.selectedBlock().height() < 180);
}

TEST_F(DayChartViewTest, TheMenuOfABlockOffersWhatCanBeDoneWithIt) {
    std::string wanted;
    const auto subscription = view.categoryWanted.subscribe([&](const auto& item) { wanted = item.appName; });
    key(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(view.findChild<QMenu*>(), nullptr);
    key(Qt::Key_Down);
    key(Qt::Key_F10, Qt::ShiftModifier);
    auto* menu = view.findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    EXPECT_THAT(mapped(menu->actions(), [](const auto* action) { return action->text().toStdString(); }),
                ElementsAre("Category and tags…", "Assign to Project", "", "Delete"));
    menu->actions().front()->trigger();
    EXPECT_EQ(wanted, "Editor");
    menu->actions().back()->trigger();
    EXPECT_EQ(context().fetch<ActivityRecord>().size(), 1);
}

TEST_F(DayChartViewTest, ControlAndTheWheelZoomAndTheHourInTheMiddleStays) {
    for (const int angle : {120, 60, 60})
        wheel(angle);
    EXPECT_EQ(chart.hourHeight(), 300);
    wheel(-120);
    EXPECT_EQ(chart.hourHeight(), 240);
    EXPECT_EQ(view.verticalScrollBar()->value(), 0);
    view.verticalScrollBar()->setValue(184);
    const double middle = chart.layout().hourForY(184 + 200);
    EXPECT_EQ(middle, 10);
    wheel(120);
    runLoop.playFor(1s);
    EXPECT_NEAR(chart.layout().hourForY(view.verticalScrollBar()->value() + 200.0), middle, 0.51);
}

TEST_F(DayChartViewTest, ScrollsAFractionOfTheRowToTheSameFractionOfTheView) {
    for (const auto& [fraction, value] : {std::pair{0.5, 144 + 90 - 200}, {0.0, 144}, {0.25, 144 + 45 - 100}}) {
        chart.scrollRequested.send({9, fraction, 0.3s});
        EXPECT_EQ(view.verticalScrollBar()->value(), value);
    }
    Motion::setAllowed(true);
    chart.scrollRequested.send({0, 0, 0.3s});
    EXPECT_EQ(view.verticalScrollBar()->value(), 89);
    EXPECT_EQ(view.parts().animation.state(), QAbstractAnimation::Running);
    wheel(120, Qt::NoModifier);
    EXPECT_EQ(view.parts().animation.state(), QAbstractAnimation::Stopped);
    Motion::setAllowed(false);
}

TEST_F(DayChartViewTest, PaintsBlocksBarsOverThemAndTheNowLine) {
    const QImage image = view.grab().toImage();
    const auto color = [&](int x, int row) { return image.pixelColor(x, row).rgb(); };
    const auto& scene = view.parts().scene;
    const QColor block = scene.blocks.front().color;
    const QColor fill = toQColor(scene.bars.front().tone.fill);
    const auto over = [&](int top, int below) { return qRound(top * 0.6 + below * 0.4); };
    EXPECT_EQ(color(70, y(9.75)), block.rgb());
    EXPECT_EQ(color(504, y(9.75)), block.rgb());
    EXPECT_EQ(color(barFrame().left(), y(9.75)), fill.rgb());  // its edge
    const QColor inside = image.pixelColor(barFrame().center());
    EXPECT_NEAR(inside.red(), over(fill.red(), block.red()), 2);
    EXPECT_NEAR(inside.green(), over(fill.green(), block.green()), 2);
    EXPECT_NEAR(inside.blue(), over(fill.blue(), block.blue()), 2);

    view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
    const QImage scrolled = view.grab().toImage();
    EXPECT_EQ(scrolled.pixelColor(60, y(12) - 1).rgb(), theme().accent.rgb());
    chart.stepDate(1);
    settle();
    view.verticalScrollBar()->setValue(0);
    const QImage tomorrow = view.grab().toImage();
    EXPECT_NE(tomorrow.pixelColor(60, y(12) - 1).rgb(), theme().accent.rgb());
    EXPECT_TRUE(view.parts().scene.blocks.empty());
}

TEST_F(DayChartViewTest, AssistiveTechnologyFindsBlocksAndBarsWhereTheyAre) {
    auto* list = QAccessible::queryAccessibleInterface(&view);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->role(), QAccessible::List);
    EXPECT_EQ(list->text(QAccessible::Name).toStdString(), localization.text("a11y_day_chart", chart.dateLabel(), 2));
    EXPECT_THAT(namesOfParts(view),
                ElementsAre("Editor, 09:00 to 10:00, 1h", "Mail, 10:30 to 11:00, 30m", "Project Web, 09:00 to 10:00"));
    auto* block = list->child(0);
    auto* bar = list->child(2);
    EXPECT_EQ(block->role(), QAccessible::ListItem);
    EXPECT_EQ(block->rect(), QRect(view.mapToGlobal(QPoint(50, y(9))), QSize(460, 180)));
    EXPECT_EQ(list->indexOfChild(bar), 2);
    EXPECT_EQ(list->childAt(bar->rect().center().x(), bar->rect().center().y()), bar);

    EXPECT_EQ(bar->actionInterface()->actionNames(), (QStringList{QAccessibleActionInterface::pressAction(), "delete",
                                                                  QAccessibleActionInterface::setFocusAction()}));
    bar->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(chosen(), "bar");
    EXPECT_TRUE(bar->state().selected);
    bar->actionInterface()->doAction("delete");
    EXPECT_EQ(list->childCount(), 2);
    block->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(chosen(), "Editor");
    chart.selectTimeRange({9, 9.5});
    ASSERT_EQ(list->childCount(), 3);
    EXPECT_EQ(list->child(2)->text(QAccessible::Name), "Selected time 09:00 to 09:30");
}

TEST_F(DayChartViewTest, NothingIsPaintedUntilTheMinuteAndNothingRunsWhileHidden) {
    runLoop.playUntil("12:00:10");
    settle();
    PaintCount paints(*view.viewport());
    runLoop.playUntil("12:00:59");
    chart.changed.send();
    settle();
    EXPECT_EQ(paints.take(), 0);
    runLoop.playUntil("12:01:00");
    settle();
    EXPECT_EQ(paints.take(), 1);
    const int timers = runLoop.pendingTimers();
    view.hide();
    EXPECT_EQ(runLoop.pendingTimers(), timers - 1);
    chart.zoomIn();
    runLoop.playUntil("12:03:00");
    settle();
    EXPECT_EQ(paints.take(), 0);
}

}  // namespace
}  // namespace quorvane
