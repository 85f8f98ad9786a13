#pragma once

#include "l10n/Localization.h"
#include "shell/state/AppCategoryManagementView.h"

class QWidget;

namespace quorvane::AppPreferenceSheet {

/// Opens over the window what `beginAdding` or `beginEditing` has begun: the application's name, its category and its
/// tags.
void open(QWidget& window, AppCategoryManagementView& view, const Localization& localization, bool isNew);

}  // namespace quorvane::AppPreferenceSheet
