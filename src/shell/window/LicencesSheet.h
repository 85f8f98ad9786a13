#pragma once

#include "l10n/Localization.h"

class QWidget;

namespace quorvane::LicencesSheet {

/// Opens over the window: the libraries that Quorvane is built with, whose they are and under which licence.
void open(QWidget& window, const Localization& localization);

}  // namespace quorvane::LicencesSheet
