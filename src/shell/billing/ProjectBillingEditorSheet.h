#pragma once

#include "l10n/Localization.h"
#include "shell/state/ProjectBillingEditor.h"

#include <memory>
#include <optional>
#include <string>

class QWidget;

namespace quorvane {

class Sheet;

namespace ProjectBillingEditorSheet {

/// What the project's time is worth, for the line below the fields.
struct Figures {
    std::string rangeLabel;
    double hours = 0;  ///< of the project in the range
};

/// Opens the editor over the window. It ends with `done`, by its button or by Esc; there is nothing to cancel.
/// `Sheet::closed` is sent after that.
Sheet& open(QWidget& window, std::unique_ptr<ProjectBillingEditor> editor, const std::optional<Figures>& figures,
            const Localization& localization);

}  // namespace ProjectBillingEditorSheet
}  // namespace quorvane
