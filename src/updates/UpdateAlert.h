#pragma once

#include "diagnostics/ApplicationInfo.h"
#include "l10n/Localization.h"
#include "updates/UpdateState.h"

#include <optional>
#include <string>

namespace quorvane {

/// What the user reads about an outcome. Without a link it has one button, to close.
struct UpdateAlert {
    std::string title;
    std::string message{};
    std::string notes{};  ///< what is new, several lines; may be empty
    std::string link{};   ///< for `downloadButton`: opens in the browser
    std::string downloadButton{};
    std::string laterButton{};  ///< leads to `ZelkorUpdateController::dismiss`
    std::string skipButton{};   ///< leads to `ZelkorUpdateController::skipVersion`
    friend bool operator==(const UpdateAlert&, const UpdateAlert&) = default;
};

/// None while there is nothing to say: of what the user did not ask for, only a new version is told.
[[nodiscard]] std::optional<UpdateAlert> updateAlert(const UpdateState& state, const ApplicationInfo& application,
                                                     const Localization& localization);

}  // namespace quorvane
