#pragma once

#include "l10n/Localization.h"
#include "rules/CategoryPickerState.h"
#include "rules/CategoryTagManager.h"

#include <functional>
#include <memory>
#include <string>

class QWidget;

namespace quorvane::CategorySheet {

/// Opens the choice of category and tags over the window. `saved` is called after the choice has been saved; nothing
/// is called when it is cancelled. `appName` may be empty.
void open(QWidget& window, std::unique_ptr<CategoryPickerState> state, const CategoryTagManager& categories,
          const std::string& appName, const Localization& localization, std::function<void()> saved);

}  // namespace quorvane::CategorySheet
