#pragma once

#include "l10n/Localization.h"
#include "shell/look/SaveDialog.h"
#include "shell/state/ShareImageWindow.h"

class QWidget;

namespace quorvane {

class Sheet;

/// The share window: the day's card, how it looks, and what can be done with it.
namespace ShareImageSheet {

/// All of it outlives the sheet.
struct Services {
    platform::RunLoop& runLoop;
    ConsoleSink& console;
    const Localization& localization;
    /// Asks for the file; empty for the desktop's dialog.
    std::function<void(QWidget&, const SaveDialog::Content&, std::function<void(const std::filesystem::path&)>)>
        chooseFile{};
};

/// Opens it over the window. Pictures are rendered one after the other while it is open.
Sheet& open(QWidget& window, ShareImageWindow::Inputs inputs, const Services& services);

}  // namespace ShareImageSheet
}  // namespace quorvane
