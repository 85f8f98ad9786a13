#include "desktop/support/DesktopSession.h"

#include "desktop/support/TestWindow.h"
#include "desktop/support/Waiting.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <utility>

namespace quorvane {
DesktopSession::DesktopSession(const Parts& parts) {
    for (const char* folder : {"run", "home/.local/share", "home/.config"}) {
        std::filesystem::create_directories(folder_ / folder);
        std::filesystem::permissions(folder_ / folder, std::filesystem::perms::owner_all);
    }
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY", "XDG_SESSION_ID", "XDG_SESSION_TYPE",
                                 "XDG_CURRENT_DESKTOP", "XDG_STATE_HOME", "XDG_DATA_DIRS", "XDG_CONFIG_DIRS"})
        environment_.unset(variable);
    environment_.set("HOME", folder_ / "home");
    environment_.set("XDG_RUNTIME_DIR", runtimeDirectory());
    environment_.set("XDG_DATA_HOME", dataHome());
    environment_.set("XDG_CONFIG_HOME", configHome());
    for (const char* variable : {"DBUS_SYSTEM_BUS_ADDRESS", "DBUS_SESSION_BUS_ADDRESS"})
        environment_.set(variable, "unix:path=" + (folder_ / "no-bus").string());
    if (parts.buses) {
        for (const auto& [name, variable] : {std::pair("system-bus", "DBUS_SYSTEM_BUS_ADDRESS"),
                                             std::pair("session-bus", "DBUS_SESSION_BUS_ADDRESS")}) {
            buses_.push_back(std::make_unique<PrivateBus>(folder_ / name));
            environment_.set(variable, buses_.back()->address());
        }
    }
    if (parts.display) startServer(parts.serverArguments);
    if (parts.isUntrusted) distrust();
    if (parts.display && parts.windowManager) startWindowManager();
}

void DesktopSession::startServer(std::vector<std::string> arguments) {
    // A file with one cookie, so that the server can tell trusted from untrusted clients.
    const auto cookies = (folder_ / "cookies").string();
    environment_.set("XAUTHORITY", cookies);
    if (run({"xauth", "add", ":0", ".", "0123456789abcdef0123456789abcdef"}) != 0)
        throw std::runtime_error("xauth fails");
    arguments.insert(arguments.begin(), {"Xvfb", "-displayfd", "{ready}", "-screen", "0", "800x600x24", "-nolisten",
                                         "tcp", "-noreset", "+extension", "SECURITY", "-auth", cookies});
    server_ = std::make_unique<ChildProcess>(std::move(arguments));
    const auto number = server_->readyLine();
    if (!number) throw std::runtime_error("Xvfb does not start");
    environment_.set("DISPLAY", ":" + *number);
    if (run({"xauth", "add", ":" + *number, ".", "0123456789abcdef0123456789abcdef"}) != 0)
        throw std::runtime_error("xauth fails");
}

void DesktopSession::distrust() {
    const std::string display = std::getenv("DISPLAY");
    if (run({"xauth", "generate", display, ".", "untrusted"}) != 0) throw std::runtime_error("xauth fails");
}

void DesktopSession::startWindowManager() {
    windowManager_ = std::make_unique<ChildProcess>(std::vector<std::string>{"openbox", "--sm-disable"});
    // It is ready when it gives the focus to a window that asks; what it says about itself earlier means little.
    TestWindow probe({.instance = "probe", .wmClass = "Probe"});
    const auto answers = [&] {
        probe.activate();
        return probe.hasFocus();
    };
    if (!waitUntil(answers, 10s)) throw std::runtime_error("openbox does not start");
    probe.destroy();
}

}  // namespace quorvane
