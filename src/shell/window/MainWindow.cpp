#include "shell/window/MainWindow.h"

#include "shell/export/ExportPage.h"
#include "shell/logs/LogViewSection.h"
#include "shell/logs/LogViewerWindow.h"
#include "shell/look/AccessibleRole.h"
#include "shell/look/Alert.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"
#include "shell/rules/RulesPage.h"
#include "shell/settings/SettingsSheet.h"
#include "shell/signals/Subscribe.h"
#include "shell/window/AboutSheet.h"
#include "shell/window/ActivityPage.h"
#include "shell/window/ApplicationMenu.h"
#include "shell/window/BillingSheets.h"
#include "shell/window/CloudSyncSheet.h"
#include "shell/window/SectionPages.h"
#include "shell/window/Shortcuts.h"
#include "shell/window/Sidebar.h"
#include "shell/window/UpdateNotice.h"
#include "shell/window/WindowFrame.h"

#include <QApplication>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QTimer>
#include <memory>
#include <utility>

namespace quorvane {
namespace {

constexpr QSize leastSize(480, 420);
constexpr QSize firstSize(1280, 832);
constexpr int railBelow = 1060;
constexpr const char* closeHintKey = "hasSeenCloseHint";

}  // namespace

MainWindow::MainWindow(AppServices& services)
    : Keeps(std::make_unique<MainWindowStates>(services)), services_(services),
      sidebar_(new Sidebar(services.tracker, services.context, services.runLoop, services.localization, this)),
      activityPage_(
          new ActivityPage({activity(), services.tracker, services.categories, services.context,
                            services.applicationIcons, services.localization, services.console, services.randomWords})),
      pages_(makePages()), updateNotice_(new UpdateNotice(*this, services)) {
    setWindowTitle(ContentView::windowTitle);
    setAccessibleRole(*this, QAccessible::Window);
    setMinimumSize(leastSize);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(sidebar_);
    row->addWidget(pages_, 1);
    chooseSection(MainSection::activity);
    Shortcuts::add(*this, *activityPage_, services_, activity().chart());
    subscribe(sidebar_->sectionChosen, *this, [this](MainSection section) { chooseSection(section); });
    subscribe(sidebar_->settingsWanted, *this, [this] { openSettings(SettingsSheet::Page::general); });
    subscribe(sidebar_->healthWanted, *this, [this] { openSettings(SettingsSheet::Page::capture); });
    subscribe(sidebar_->cloudSyncWanted, *this, [this] { openCloudSync(); });
    subscribe(sidebar_->aboutWanted, *this, [this] { openAbout(); });
    subscribe(services_.aboutRequested, *this, [this] { openAbout(); });
    subscribe(activity().leftMany, *this, [this] { services_.returnMemory(); });
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state != Qt::ApplicationActive) activity().chart().applicationLeft();
    });
    resize(firstSize);
    new WindowFrame(*this, services_.defaults, services_.runLoop);
}

SectionPages* MainWindow::makePages() {
    return new SectionPages(
        {{{.make = [this] { return activityPage_; },
           .mainView = [this](QWidget&) { return activityPage_->mainView(); }},
          {.make = [this] { return BillingSheets::makePage(services_); }},
          {.make = [this] { return new RulesPage(services_); },
           .mainView = [](QWidget& page) { return static_cast<RulesPage&>(page).mainView(); }},
          {.make = [this] { return new ExportPage(services_); },
           .mayRenew = [](QWidget& page) { return !static_cast<ExportPage&>(page).isExporting(); }}}},
        this);
}

void MainWindow::chooseSection(MainSection section) {
    parts_->content.setSelectedSection(section);
    sidebar_->setSection(section);
    pages_->choose(section);
}

void MainWindow::goToSection(MainSection section) {
    chooseSection(section);
    pages_->focusPage();
}

void MainWindow::openSettings(SettingsSheet::Page page) {
    SettingsSheet::open(
        *this, services_,
        [this] { return new LogViewSection(services_.logger, services_.localization, [this] { openLog(); }); }, page);
}

void MainWindow::openLog() {
    if (!logWindow_) {
        logWindow_ = new LogViewerWindow(services_.logger, services_.localization);
        logWindow_->setAttribute(Qt::WA_DeleteOnClose);
        connect(this, &QObject::destroyed, [log = logWindow_] { delete log.data(); });
    }
    logWindow_->show();
    logWindow_->raise();
    logWindow_->activateWindow();
}

void MainWindow::openCloudSync() {
    CloudSyncSheet::open(*this, services_);
}

void MainWindow::openAbout() {
    AboutSheet::open(*this, services_);
}

void MainWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (std::exchange(hasBegun_, true)) return;
    // The window shows first; tracking and the records come in the next turn.
    QTimer::singleShot(0, this, [this] {
        parts_->content.runFirstTask();
        parts_->content.runSecondTask();
        activity().load();
        updateNotice_->show();
    });
}

void MainWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    sidebar_->setRail(event->size().width() < railBelow);
}

void MainWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && activity().isDataLoaded())
        activity().chart().applicationBecameActive();
}

void MainWindow::contextMenuEvent(QContextMenuEvent* event) {
    if (!sidebar_->geometry().contains(event->pos())) return;
    auto* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    fillApplicationMenu(*menu, services_.menuBar, services_.updates, services_.localization);
    menu->popup(event->globalPos());
}

void MainWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), theme().canvas);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!mayClose()) return event->ignore();
    QWidget::closeEvent(event);
}

bool MainWindow::mayClose() {
    if (services_.hasTray() || services_.defaults.value(closeHintKey)) return true;
    services_.defaults.setValue(closeHintKey, "true");
    const auto& texts = services_.localization;
    Alert::show(*this,
                {.title = qt(texts.text("ui_recording_goes_on_title")),
                 .text = qt(texts.text("ui_recording_goes_on_message")),
                 .choices = {{.text = qt(texts.text("ui_close_window")), .act = [this] { close(); }, .isPrimary = true},
                             {.text = qt(texts.text("cancel")), .act = {}}}});
    return false;
}

}  // namespace quorvane
