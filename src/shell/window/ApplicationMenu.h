#pragma once

#include "l10n/Localization.h"

class QMenu;

namespace quorvane {

class MenuBarContentView;
class ZelkorUpdateController;

/// Fills a menu of a moment with the items of the tray's menu, for desktops that show no tray, and the search for
/// updates after them.
void fillApplicationMenu(QMenu& menu, MenuBarContentView& menuBar, ZelkorUpdateController& updates,
                         const Localization& localization);

}  // namespace quorvane
