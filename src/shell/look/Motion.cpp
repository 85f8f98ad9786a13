#include "shell/look/Motion.h"

namespace quorvane::Motion {
namespace {

bool& allowed() {
    static bool isAllowedNow = true;
    return isAllowedNow;
}

}  // namespace

bool isAllowed() {
    return allowed();
}

void setAllowed(bool isAllowed) {
    allowed() = isAllowed;
}

}  // namespace quorvane::Motion
