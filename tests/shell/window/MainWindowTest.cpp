#include "shell/window/MainWindow.h"

#include "shell/chart/DayCells.h"
#include "shell/chart/DayChartView.h"
#include "shell/chart/DetailsPanel.h"
#include "shell/chart/ProjectPanel.h"
#include "shell/export/ExportPage.h"
#include "shell/logs/LogViewerWindow.h"
#include "shell/look/EmptyState.h"
#include "shell/look/Sheet.h"
#include "shell/praise/PraiseCard.h"
#include "shell/rules/RulesPage.h"
#include "shell/support/WindowTest.h"
#include "shell/window/ActivityPage.h"
#include "shell/window/SectionPages.h"
#include "store/ActivityRecord.h"
#include "store/AppSettings.h"
#include "support/Builders.h"
#include "support/Mapped.h"
#include "updates/SignedFeed.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPointer>
#include <QScrollBar>
#include <algorithm>
#include <filesystem>
#include <memory>
#include <utility>

namespace quorvane {
namespace {

class MainWindowTest : public WindowTest {
protected:
    WindowScene& open(QSize size = {1280, 832}, const char* language = "en", bool isEmpty = false) {
        scene.emplace(language, isEmpty);
        scene->open(size);
        scene->workUntil("16:58:30");
        scene->window().activateWindow();
        scene->settle();
        return *scene;
    }
    void shortcut(const char* keys) {
        QWidget* const target = QApplication::focusWidget() != nullptr ? QApplication::focusWidget() : &scene->window();
        const auto combination = QKeySequence(keys)[0];
        QKeyEvent override(QEvent::ShortcutOverride, combination.key(), combination.keyboardModifiers());
        QApplication::sendEvent(target, &override);
        press(combination.key(), combination.keyboardModifiers());
        scene->settle();
    }
    bool shows(const std::string& text) {
        for (const auto role : {QAccessible::StaticText, QAccessible::Button, QAccessible::Grouping}) {
            const auto names = accessibleNames(scene->window(), role);
            if (std::ranges::any_of(names, [&](const auto& name) { return name.find(text) != std::string::npos; }))
                return true;
        }
        return false;
    }
};

TEST_F(MainWindowTest, AnAbsenceIsToldWhileItLastsAndOfferedOnTheReturnWithoutTheFocus) {
    open();
    scene->runLoop.playUntil("17:20:00");
    scene->settle();
    EXPECT_TRUE(shows("since 16:58, not counted"));
    const QWidget* const focus = QApplication::focusWidget();
    scene->desktop.pressKey();
    scene->settle();
    EXPECT_TRUE(shows("Away 17:00 – 17:20")) << "until then a project has the time";
    EXPECT_EQ(QApplication::focusWidget(), focus);
    click("Assign…");
    scene->settle();
    EXPECT_FALSE(shows("Away 17:00 – 17:20"));
    ASSERT_TRUE(scene->chart().projectSelector());
}

TEST_F(MainWindowTest, TrackingAndTheRecordsBeginWithTheFirstContent) {
    scene.emplace();
    EXPECT_FALSE(scene->store.context().fetch<ActivityRecord>().empty());
    scene->open({1280, 832});
    EXPECT_THAT(scene->console.lines(), Contains("ContentView: 启动活动追踪器"));
    EXPECT_TRUE(scene->window().activity().isDataLoaded());
    scene->workUntil("16:58:30");
    EXPECT_THAT(texts(), IsSupersetOf({std::string("Recording"), std::string("Terminal"), std::string("since 16:49")}));
    click("Pause Recording");
    EXPECT_THAT(texts(), Contains("Paused"));
    click("Start Recording");
    EXPECT_THAT(texts(), Contains("Recording"));
}

TEST_F(MainWindowTest, EverySectionHasItsScreenAndItsKey) {
    open();
    const std::pair<const char*, const char*> sections[] = {
        {"Billing", "Estimated amount"}, {"Rules", "Import Built-in Rules"}, {"Export", "Time range"}};
    int key = 1;
    for (const auto& [name, content] : sections) {
        click(name);
        EXPECT_TRUE(shows(content)) << name;
        click("Timeline");
        EXPECT_FALSE(shows(content)) << name;
        buttonCalled(scene->window(), "Timeline").setFocus();
        shortcut(("Ctrl+" + std::to_string(++key)).c_str());
        EXPECT_TRUE(shows(content)) << name;
        const QWidget* const focus = QApplication::focusWidget();
        EXPECT_TRUE(focus != nullptr && widgetBelow<SectionPages>(scene->window()).isAncestorOf(focus)) << name;
    }
    shortcut("Ctrl+1");
    EXPECT_TRUE(widgetBelow<DayChartView>(scene->window()).hasFocus());
    buttonCalled(scene->window(), "Billing").setFocus();
    shortcut("Ctrl+1");
    EXPECT_TRUE(widgetBelow<DayChartView>(scene->window()).hasFocus()) << "also where it is open already";
    for (const char* const keys : {"Alt+2", "Alt+3"}) {
        buttonCalled(scene->window(), "Today").setFocus();
        shortcut(keys);
        EXPECT_NE(dynamic_cast<DayCells*>(QApplication::focusWidget()), nullptr) << "for the arrows: " << keys;
    }
}

TEST_F(MainWindowTest, BillingsKeysActWhereverTheFocusIsWhileItsSectionIsShown) {
    open();
    shortcut("Ctrl+R");
    EXPECT_THAT(dialogs(), IsEmpty());
    click("Billing");
    buttonCalled(scene->window(), "Rules").setFocus();
    shortcut("Ctrl+R");
    EXPECT_THAT(dialogs(), SizeIs(1));
    shortcut("Ctrl+P");
    EXPECT_THAT(dialogs(), SizeIs(1)) << "not under a sheet";
}

TEST_F(MainWindowTest, ADayBeginsAtNowOrAtItsFirstActivityUntilSomebodyScrolls) {
    auto& chart = open().chart();
    auto& view = widgetBelow<DayChartView>(scene->window());
    const auto wait = [&] {
        scene->runLoop.playFor(1s);
        scene->settle();
    };
    const auto hourAt = [&](double share) {
        return chart.layout().hourForY(view.verticalScrollBar()->value() + share * view.viewport()->height());
    };
    const auto step = [&](const std::vector<const char*>& keys) {
        for (const char* const key : keys)
            shortcut(key);
        wait();
    };
    wait();
    for (const auto& keys : std::vector<std::vector<const char*>>{{}, {"Alt+2", "Alt+1"}, {"Ctrl+2", "Ctrl+1"}}) {
        step(keys);
        EXPECT_NEAR(hourAt(0.5), 16.5, 1) << testing::PrintToString(keys);
    }
    step({"Alt+Left"});
    EXPECT_EQ(static_cast<int>(hourAt(0)), *chart.activityHours().begin());
    click("Today");
    wait();
    EXPECT_NEAR(hourAt(0.5), 16.5, 1);
    view.setFocus();
    press(Qt::Key_PageUp);
    const double chosen = hourAt(0.5);
    EXPECT_LT(chosen, 16);
    step({"Ctrl+2", "Ctrl+1"});
    EXPECT_EQ(hourAt(0.5), chosen) << "a look at another section";
    step({"Alt+3", "Alt+1"});
    EXPECT_NEAR(hourAt(0.5), 16.5, 1);
}

TEST_F(MainWindowTest, KeysStepThroughDaysWeeksAndMonthsAndZoom) {
    auto& chart = open().chart();
    const struct {
        const char* keys;
        const char* date;
        double height = 180;
    } rows[] = {
        {"Alt+Left", "2026-03-11"},    {"Alt+Right", "2026-03-12"},   {"Alt+2", "2026-03-12"},
        {"Alt+Left", "2026-03-05"},    {"Alt+3", "2026-03-05"},       {"Alt+Right", "2026-04-05"},
        {"Alt+1", "2026-04-05"},       {"Ctrl++", "2026-04-05", 240}, {"Ctrl++", "2026-04-05", 300},
        {"Ctrl+-", "2026-04-05", 240}, {"Ctrl+0", "2026-04-05", 180},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.keys);
        shortcut(row.keys);
        EXPECT_EQ(civilDateText(Calendar::current().civilDate(chart.selectedDate())), row.date);
        EXPECT_EQ(chart.hourHeight(), row.height);
    }
    click("Today");
    EXPECT_EQ(civilDateText(Calendar::current().civilDate(chart.selectedDate())), "2026-03-12");
}

TEST_F(MainWindowTest, TheExportIsMadeAnewWhileOtherSectionsKeepWhatTheyShow) {
    open();
    click("Rules");
    const auto* const rules = &widgetBelow<RulesPage>(scene->window());
    click("Export");
    const QPointer<QWidget> first = &widgetBelow<ExportPage>(scene->window());
    click("Rules");
    EXPECT_EQ(&widgetBelow<RulesPage>(scene->window()), rules);
    EXPECT_TRUE(first);
    click("Export");
    EXPECT_FALSE(first) << "its range ends when it was made";
}

TEST_F(MainWindowTest, ThereIsOneLogWindowAndItGoesWithTheMainOne) {
    open();
    const auto logWindows = [] {
        std::vector<QPointer<QWidget>> found;
        for (auto* const widget : QApplication::topLevelWidgets())
            if (dynamic_cast<LogViewerWindow*>(widget) != nullptr) found.emplace_back(widget);
        return found;
    };
    shortcut("Ctrl+Shift+L");
    scene->window().activateWindow();
    shortcut("Ctrl+Shift+L");
    const auto shown = logWindows();
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_TRUE(shown[0]->isVisible());
    EXPECT_EQ(shown[0]->windowTitle(), "Log – Quorvane");
    scene.reset();
    EXPECT_FALSE(shown[0]);
}

TEST_F(MainWindowTest, AnyDayOfTheHistoryShowsItsRecordsAndWhatChangesInThem) {
    auto& day = open();
    auto record =
        aRecord().from("2026-01-12 09:00:00").to("2026-01-12 10:00:00").app("Harbour").in(day.store.context());
    aRecord().from("2026-01-13 09:00:00").to("2026-01-13 09:00:40").app("Glance").in(day.store.context());
    day.runLoop.holdBackground();
    const auto go = [&](const char* date) {
        day.chart().selectDate(at(date));
        day.settle();
    };
    auto& view = widgetBelow<DayChartView>(day.window());
    const auto emptyTexts = [&] {
        auto& state = widgetBelow<EmptyState>(view);
        return state.isVisible() ? accessibleNames(state, QAccessible::StaticText) : std::vector<std::string>();
    };
    const auto blocks = [&] { return mapped(day.chart().processedRecords(), &ProcessedActivityItem::appName); };
    go("2026-01-11 12:00:00");
    EXPECT_THAT(emptyTexts(), IsEmpty()) << "who has not read can't know";
    day.runLoop.playFor(0.3s);
    day.settle();
    EXPECT_TRUE(shows("Loading"));
    EXPECT_FALSE(view.isVisible());
    EXPECT_FALSE(widgetBelow<PraiseCard>(day.window()).isVisible());
    day.runLoop.releaseBackground();
    day.settle();
    EXPECT_THAT(emptyTexts(), Contains("Nothing recorded on this day"));
    EXPECT_FALSE(shows("Loading"));
    go("2026-01-13 12:00:00");
    EXPECT_THAT(emptyTexts(), Contains("Nothing on this day lasted a minute"));
    go("2026-01-12 12:00:00");
    EXPECT_THAT(emptyTexts(), IsEmpty());
    EXPECT_THAT(blocks(), ElementsAre("Harbour"));
    record->appName = "Quay";
    day.settle();
    EXPECT_THAT(blocks(), ElementsAre("Quay"));
    day.store.context().save();
    day.settle();
    const std::weak_ptr<ActivityRecord> held = std::exchange(record, nullptr);
    EXPECT_TRUE(held.expired()) << "what is shown holds no objects";

    const auto away = day.store.file().string() + ".away";
    std::filesystem::rename(day.store.file(), away);
    go("2026-01-11 12:00:00");
    EXPECT_TRUE(shows("The records cannot be read"));
    EXPECT_FALSE(view.isVisible());
    std::filesystem::rename(away, day.store.file());
    click("Try Again");
    EXPECT_THAT(emptyTexts(), Contains("Nothing recorded on this day"));
    EXPECT_FALSE(shows("The records cannot be read"));
}

TEST_F(MainWindowTest, OnlyAReturnFromAnotherApplicationShowsTheNewDay) {
    auto& day = open();
    const Date before = day.chart().selectedDate();
    shortcut("Ctrl+Shift+L");
    day.runLoop.playUntil(at("2026-03-13 09:00:00"));
    day.window().activateWindow();
    day.settle();
    EXPECT_EQ(day.chart().selectedDate(), before) << "from the log window";
    day.chart().selectDate(day.runLoop.now());
    day.chart().selectTimeRange({8, 8.5});
    shortcut("Ctrl+Shift+L");
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
    day.runLoop.playUntil(at("2026-03-14 09:00:00"));
    day.window().activateWindow();
    day.settle();
    EXPECT_EQ(day.chart().selectedDate(), day.runLoop.now());
    EXPECT_FALSE(widgetBelow<ProjectPanel>(day.window()).isVisible());
}

TEST_F(MainWindowTest, AChosenBlockShowsItsDetailsWhereThereIsRoom) {
    for (const QSize size : {QSize(1280, 832), QSize(900, 640), QSize(480, 420)}) {
        SCOPED_TRACE(size.width());
        auto& day = open(size);
        auto& details = widgetBelow<DetailsPanel>(day.window());
        EXPECT_FALSE(details.isVisible());
        day.chart().click({70, day.chart().layout().yPosition(15.7)}, 510);
        day.settle();
        ASSERT_TRUE(details.isVisible());
        EXPECT_TRUE(details.parentWidget()->rect().contains(details.geometry()));
        click("Assign to Project");
        auto& panel = widgetBelow<ProjectPanel>(day.window());
        EXPECT_TRUE(panel.isVisible());
        EXPECT_FALSE(details.isVisible());
        const auto sheets = day.window().findChildren<QDialog*>();
        const QRect place = sheets.isEmpty() ? QRect(panel.mapTo(panel.window(), QPoint()), panel.size())
                                             : static_cast<Sheet*>(sheets.front())->panel();
        EXPECT_TRUE(panel.window()->rect().contains(place));
        click("Cancel");
        EXPECT_FALSE(panel.isVisible());
        EXPECT_TRUE(details.isVisible());
    }
}

TEST_F(MainWindowTest, APanelOverThePageKeepsTheFocusInsideAndEscapeClosesIt) {
    auto& day = open({900, 640});
    day.chart().selectTimeRange({8, 8.5});
    day.settle();
    const auto& overlay = widgetBelow<Sheet>(day.window());
    for (int step = 0; step < 60; ++step) {
        press(Qt::Key_Tab);
        const QWidget* const focus = QApplication::focusWidget();
        if (step > 0) {
            ASSERT_TRUE(overlay.isAncestorOf(focus)) << step;
        }
    }
    pressKey(Qt::Key_Escape);
    EXPECT_EQ(day.chart().projectSelector(), nullptr);
    // Again, where the sheet hears it and not the panel.
    day.chart().selectTimeRange({8, 8.5});
    day.settle();
    static_cast<QDialog*>(&widgetBelow<Sheet>(day.window()))->reject();
    day.settle();
    EXPECT_EQ(day.chart().projectSelector(), nullptr);
    EXPECT_EQ(widgetBelow<ProjectPanel>(day.window()).parentWidget(), &widgetBelow<ActivityPage>(day.window()));
}

TEST_F(MainWindowTest, TheDayIsPraisedBesideTheTimelineAndMadeIntoACard) {
    auto& day = open();
    auto& card = widgetBelow<PraiseCard>(day.window());
    const auto sentence = [&] { return accessibleNames(card, QAccessible::StaticText); };
    const auto first = sentence();
    EXPECT_FALSE(first.empty());
    click("Another Message");
    EXPECT_NE(sentence(), first);
    const auto second = sentence();
    day.workUntil("17:10:00");
    EXPECT_EQ(sentence(), second) << "records come and the sentence stays";
    day.chart().selectDate(day.runLoop.now() - 86400s);
    day.settle();
    EXPECT_NE(sentence(), second) << "another day has its own";
    const auto third = sentence();
    auto& settings = *day.services().context.fetch<AppSettings>().front();
    settings.idleThresholdMinutes = 3;
    day.runLoop.playFor(0.1s);
    day.settle();
    EXPECT_EQ(sentence(), third) << "what is saved leaves the sentence alone, but for";
    settings.preferredLanguage = "ja";
    day.runLoop.playFor(0.1s);
    day.settle();
    EXPECT_THAT(sentence(), Contains(ContainsRegex("[ぁ-ん]"))) << "the language";
    click("Create Share Card");
    EXPECT_THAT(dialogs(), SizeIs(1));
    pressKey(Qt::Key_Escape);
    day.chart().selectTimeRange({8, 8.5});
    day.settle();
    EXPECT_FALSE(card.isVisible()) << "the project panel has the side for itself";
}

TEST_F(MainWindowTest, WithoutAFeedTheAboutScreenSaysWhereUpdatesComeFromAndWhatQuorvaneIsBuiltWith) {
    open();
    shortcut("F1");
    EXPECT_THAT(texts(), Contains("Updates come with your system’s packages"));
    click("Libraries and Licences…");
    EXPECT_THAT(texts(),
                IsSupersetOf({std::string("SQLite"), std::string("ICU"), std::string("Libraries and licences")}));
    EXPECT_TRUE(scene->network.requests.empty());
}

TEST_F(MainWindowTest, ANewVersionIsOfferedOnceAndASkippedOneOnlyToWhoAsks) {
    scene.emplace("en", true, testPublicKey());
    const auto feed = feedOf(feedItem("2.0", "9"));
    const std::string place = "https://updates.example.org/api/v1/public/app-updates/appcast.xml";
    const std::string query = "?app_id=quorvane&platform=linux&channel=stable";
    scene->network.answers[place + query] = platform::HttpResponse{.status = 200, .body = feed};
    scene->network.answers[place + ".sig" + query] = platform::HttpResponse{.status = 200, .body = signatureOf(feed)};
    scene->services().updates.startIfNeeded();
    scene->open({1280, 832});
    scene->workUntil("16:50:00");
    EXPECT_THAT(texts(), Contains("Quorvane 2.0 is available"));
    click("Skip This Version");
    scene->workUntil("17:59:00");
    EXPECT_THAT(texts(), Not(Contains("Quorvane 2.0 is available")));
    shortcut("F1");
    click("Check for Updates…");
    scene->workUntil("18:00:00");
    EXPECT_THAT(texts(), Contains("Quorvane 2.0 is available"));
    click("Later");
    EXPECT_THAT(texts(), Not(Contains("Quorvane 2.0 is available")));
}

TEST_F(MainWindowTest, WithoutATrayTheFirstClosingSaysThatRecordingGoesOn) {
    auto& day = open();
    day.hasTray = false;
    EXPECT_FALSE(day.window().close());
    day.settle();
    EXPECT_TRUE(day.window().isVisible());
    EXPECT_THAT(texts(), Contains("Quorvane keeps recording"));
    click("Close Window");
    EXPECT_FALSE(day.window().isVisible());
    open().hasTray = true;
    EXPECT_TRUE(scene->window().close());
}

TEST_F(MainWindowTest, SizeAndPlaceAreRememberedHoweverTheWindowEnds) {
    scene.emplace();
    EXPECT_EQ(scene->open().size(), QSize(1280, 832)) << "the first one is large";
    const std::pair<const char*, std::function<void()>> ends[] = {
        {"closed", [this] { EXPECT_TRUE(scene->window().close()); }},
        {"by the program's end", [this] { scene->endWindow(); }},
        {"with its process", [this] { scene->runLoop.playFor(1s); }},
    };
    QRect frame(40, 30, 700, 500);
    for (const auto& [name, end] : ends) {
        frame.adjust(10, 20, 50, 40);
        scene->window().setGeometry(frame);
        scene->settle();
        end();
        EXPECT_EQ(scene->open().geometry(), frame) << name;
    }
}

TEST_F(MainWindowTest, EverythingIsInTheWordsLanguageAndMirrorsFromRightToLeft) {
    open({1280, 832}, "zh");
    EXPECT_THAT(accessibleNames(scene->window(), QAccessible::RadioButton), Contains("时间线"));
    scene->window().setLayoutDirection(Qt::RightToLeft);
    scene->settle();
    const auto& chart = widgetBelow<DayChartView>(scene->window());
    const auto& details = widgetBelow<DetailsPanel>(scene->window());
    scene->chart().click({70, scene->chart().layout().yPosition(15.7)}, 510);
    scene->settle();
    EXPECT_LT(details.mapTo(&scene->window(), QPoint()).x(), chart.mapTo(&scene->window(), QPoint()).x());
}

}  // namespace
}  // namespace quorvane
