#pragma once

#include "shell/app/AppServices.h"
#include "shell/settings/SettingsSheet.h"
#include "shell/signals/Keeps.h"
#include "shell/state/ContentView.h"
#include "shell/state/MyActivityView.h"

#include <QPointer>
#include <QWidget>
#include <memory>

namespace quorvane {

class ActivityPage;
class LogViewerWindow;
class SectionPages;
class Sidebar;
class UpdateNotice;

/// What the window's parts show.
struct MainWindowStates {
    explicit MainWindowStates(AppServices& services)
        : content(services.context, services.tracker, services.console),
          activity(services.container, services.runLoop, services.categories, services.console) {}

    ContentView content;
    MyActivityView activity;
};

/// The main window: the sidebar, and beside it the chosen section. Made anew each time it is opened, it begins with the
/// timeline; its size and place are remembered. Closing it leaves the recording as it is.
class MainWindow : private Keeps<MainWindowStates>, public QWidget {
public:
    explicit MainWindow(AppServices& services);

    void chooseSection(MainSection section);
    /// The same for the keyboard, which goes on there.
    void goToSection(MainSection section);
    void openSettings(SettingsSheet::Page page = SettingsSheet::Page::general);
    void openCloudSync();
    void openAbout();
    /// The log, in a window of its own, of which there is one. It goes with this one.
    void openLog();
    [[nodiscard]] MyActivityView& activity() { return parts_->activity; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] SectionPages* makePages();
    /// Where no tray brings the window back, says once that closing it doesn't end the recording. False: stay open.
    [[nodiscard]] bool mayClose();

    AppServices& services_;
    Sidebar* sidebar_;
    ActivityPage* activityPage_;
    SectionPages* pages_;
    QPointer<LogViewerWindow> logWindow_;
    UpdateNotice* updateNotice_;
    bool hasBegun_ = false;
};

}  // namespace quorvane
