#include "desktop/support/CompositorSession.h"

namespace quorvane {

CompositorSession::CompositorSession() {
    for (const char* variable : {"DISPLAY", "XAUTHORITY", "XDG_SESSION_ID", "XDG_SESSION_TYPE", "XDG_CURRENT_DESKTOP"})
        environment_.unset(variable);
    environment_.set("HOME", folder_.path());
    environment_.set("XDG_RUNTIME_DIR", folder_.path());
    environment_.set("XDG_DATA_HOME", folder_ / "data");
    environment_.set("XDG_CONFIG_HOME", folder_ / "config");
    environment_.set("XDG_CACHE_HOME", folder_ / "cache");
    for (const char* variable : {"DBUS_SYSTEM_BUS_ADDRESS", "DBUS_SESSION_BUS_ADDRESS"})
        environment_.set(variable, "unix:path=" + (folder_ / "no-bus").string());
}

}  // namespace quorvane
