#pragma once

#include "l10n/Localization.h"
#include "shell/state/BillingPackPreviewView.h"

#include <string>

class QWidget;

namespace quorvane {

class Sheet;

namespace BillingPackPreviewSheet {

/// What is shown: the two documents, and the name that the report's file would get.
struct Content {
    std::string markdown;
    std::string emailBody;
    std::string fileName;
};

/// Opens the preview over the window. Copies go to the clipboard and are confirmed by a note that goes by itself.
Sheet& open(QWidget& window, const Content& content, const Localization& localization);

}  // namespace BillingPackPreviewSheet
}  // namespace quorvane
