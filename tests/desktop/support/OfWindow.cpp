#include "desktop/support/OfWindow.h"

namespace quorvane {

std::vector<std::string> ofWindow(const std::string& wmClass, const std::string& title,
                                  std::vector<std::string> command) {
    if (!title.empty()) command.insert(command.begin(), {QUORVANE_WINDOW_OF, wmClass, wmClass, title});
    return command;
}

}  // namespace quorvane
