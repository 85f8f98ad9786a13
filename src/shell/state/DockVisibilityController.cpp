#include "shell/state/DockVisibilityController.h"

namespace quorvane::DockVisibilityController {

void apply(ApplicationPresence& application, bool hideFromDock, bool activate) {
    using Policy = ApplicationPresence::ActivationPolicy;
    const auto wanted = hideFromDock ? Policy::accessory : Policy::regular;
    if (application.activationPolicy() != wanted) application.setActivationPolicy(wanted);
    if (hideFromDock || !activate) return;
    application.activateIgnoringOtherApps();
    application.makeKeyAndOrderFront();
}

}  // namespace quorvane::DockVisibilityController
