#include "capture/FrontWindowTitle.h"

namespace quorvane {

WindowInfo FrontWindowTitle::windowInfo(const std::string&) {
    return {.title = foreground_.frontmostWindowTitle(), .document = std::nullopt};
}

}  // namespace quorvane
