#pragma once

#include "diagnostics/AppLogger.h"
#include "l10n/Localization.h"

#include <functional>
#include <string>

class QWidget;

/// What the log window and the settings' section ask of the user.
namespace quorvane::LogActions {

/// Asks whether the log shall be emptied. One of the two is called, after the question has closed.
void confirmClear(QWidget& window, const Localization& localization, std::function<void()> clear,
                  std::function<void()> cancel);

/// Takes the report, then asks for its file; the log says in the name of `module` how that went.
void exportReport(QWidget& parent, AppLogger& logger, const Localization& localization, std::string module);

}  // namespace quorvane::LogActions
