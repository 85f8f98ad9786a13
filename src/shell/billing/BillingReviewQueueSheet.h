#pragma once

#include "l10n/Localization.h"
#include "shell/state/BillingReviewQueueView.h"

#include <functional>
#include <memory>

class QWidget;

namespace quorvane {

class Sheet;

namespace BillingReviewQueueSheet {

/// Opens the review queue over the window. What is decided in it is in the store's objects at once. The sheet deletes
/// itself after it has closed; `Sheet::closed` tells when.
Sheet& open(QWidget& window, std::unique_ptr<BillingReviewQueueView> queue, const Localization& localization);

}  // namespace BillingReviewQueueSheet
}  // namespace quorvane
