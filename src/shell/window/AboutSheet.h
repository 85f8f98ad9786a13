#pragma once

#include "diagnostics/ApplicationInfo.h"
#include "l10n/Localization.h"

class QWidget;

namespace quorvane::AboutSheet {

/// Opens over the window: mark, name, version and what the program is for.
void open(QWidget& window, const Localization& localization, const ApplicationInfo& application);

}  // namespace quorvane::AboutSheet
