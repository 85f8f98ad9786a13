#pragma once

#include "shell/billing/BillingPage.h"

namespace quorvane {

struct AppServices;

/// The sheets over the billing section: the review queue, a project's rate and client, and the preview. They open over
/// the page's window.
namespace BillingSheets {

/// A page whose buttons open them.
[[nodiscard]] BillingPage* makePage(AppServices& services);

}  // namespace BillingSheets
}  // namespace quorvane
