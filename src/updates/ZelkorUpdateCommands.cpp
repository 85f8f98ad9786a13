#include "updates/ZelkorUpdateCommands.h"

namespace quorvane {

std::string ZelkorUpdateCommands::text() const {
    return controller_.hasFeed() ? localization_.text("zelkor.update.check") : localization_.text("ui_update_packages");
}

bool ZelkorUpdateCommands::isEnabled() const {
    return controller_.hasFeed() && controller_.state().kind != UpdateState::Kind::checking;
}

void ZelkorUpdateCommands::perform() {
    controller_.checkForUpdates();
}

}  // namespace quorvane
