#pragma once

class QMenu;

namespace quorvane {

class MenuBarContentView;

/// Fills a menu of a moment with the items of the tray's menu, for desktops that show no tray.
void fillApplicationMenu(QMenu& menu, MenuBarContentView& menuBar);

}  // namespace quorvane
