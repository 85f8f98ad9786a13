#pragma once

#include "shell/app/AppServices.h"

#include <functional>

class QWidget;

namespace quorvane::SettingsSheet {

/// Makes the section of the log, which the sheet then owns; may be empty.
using MakeLogSection = std::function<QWidget*()>;

enum class Page { general, tracking, capture, organization, diagnostics };

/// Opens the settings over the window. They are stored with "save" alone; the login item, the applications' categories
/// and what concerns permissions change at once.
void open(QWidget& window, AppServices& services, const MakeLogSection& makeLogSection = {}, Page page = Page::general);

}  // namespace quorvane::SettingsSheet
