#pragma once

#include "l10n/Localization.h"
#include "updates/ZelkorUpdateController.h"

#include <string>

namespace quorvane {

/// The application menu's item for updates. What it is made on outlives it. Main thread only.
class ZelkorUpdateCommands {
public:
    ZelkorUpdateCommands(ZelkorUpdateController& controller, const Localization& localization)
        : controller_(controller), localization_(localization) {}

    /// "Check for Updates…"; without a feed it says where updates come from instead, and can't be chosen.
    [[nodiscard]] std::string text() const;
    [[nodiscard]] bool isEnabled() const;
    void perform();

private:
    ZelkorUpdateController& controller_;
    const Localization& localization_;
};

}  // namespace quorvane
