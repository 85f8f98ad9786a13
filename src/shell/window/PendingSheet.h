#pragma once

#include "l10n/Localization.h"

#include <QString>

class QWidget;

namespace quorvane::PendingSheet {

/// Opens in the place of a sheet that has no screen, and says so.
void open(QWidget& window, const QString& title, const QString& iconName, const Localization& localization);

}  // namespace quorvane::PendingSheet
