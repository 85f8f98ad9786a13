#pragma once

#include "base/Signal.h"
#include "platform/linux/bus/DBusConnection.h"
#include "shell/look/Appearance.h"
#include "shell/state/MenuBarContentView.h"

#include <QMenu>
#include <QSystemTrayIcon>
#include <memory>
#include <vector>

namespace quorvane {

/// The menu bar item as an icon in the desktop's tray. What it is made on outlives it. Main thread only.
class TrayIcon {
public:
    TrayIcon(MenuBarContentView& menuBar, Appearance& appearance, platform::DBusConnection& sessionBus);
    TrayIcon(const TrayIcon&) = delete;
    TrayIcon& operator=(const TrayIcon&) = delete;
    ~TrayIcon();

    /// Is there a tray that takes the icon? True also while that is open, in the first 15 s at most.
    [[nodiscard]] bool hasTray() const;
    Signal<> hasTrayChanged;  ///< when it has been found out

private:
    void create();
    void buildMenu();
    void update();
    void updateInks();

    MenuBarContentView& menuBar_;
    Appearance& appearance_;
    QMenu menu_;
    std::vector<MenuBarItem> shown_;  ///< as the actions of the menu stand; empty: all are to be set
    std::unique_ptr<QSystemTrayIcon> icon_;
    QObject context_;  // dies first: nothing is created any more
};

}  // namespace quorvane
