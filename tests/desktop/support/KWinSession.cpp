#include "desktop/support/KWinSession.h"

#include "desktop/support/Waiting.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <fmt/format.h>
#include <stdexcept>

namespace quorvane {
namespace {

constexpr const char* program = "/usr/bin/kwin_wayland";
constexpr const char* socketName = "wayland-test";

constexpr const char* focusScript = R"((function () {{
    var is6 = workspace.windowActivated !== undefined, windows = is6 ? workspace.windowList() : workspace.clientList();
    for (var i = 0; i < windows.length; i++)
        if (String(windows[i].resourceClass) === "{}")
            workspace[is6 ? "activeWindow" : "activeClient"] = windows[i];
}})();
)";

void call(const char* service, const char* path, const char* interface, const char* method,
          const QVariantList& arguments) {
    constexpr const char* name = "a test's word to KWin";
    const auto isDone = [&] {
        auto bus = QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), name);
        auto message = QDBusMessage::createMethodCall(service, path, interface, method);
        message.setArguments(arguments);
        return bus.call(message, QDBus::Block, 5000).type() == QDBusMessage::ReplyMessage;
    };
    // KWin is on the bus somewhat later than at its socket.
    const bool hasAnswered = waitUntil(isDone);
    QDBusConnection::disconnectFromBus(name);
    if (!hasAnswered) throw std::runtime_error(std::string("KWin refuses ") + method);
}

void callScripting(const char* method, const QVariantList& arguments) {
    call("org.kde.KWin", "/Scripting", "org.kde.kwin.Scripting", method, arguments);
}

}  // namespace

bool KWinSession::isThere() {
    return std::filesystem::exists(program);
}

KWinSession::KWinSession(bool isOpenToAll) : isOpenToAll_(isOpenToAll), bus_(folder_ / "session-bus") {
    environment_.set("DBUS_SESSION_BUS_ADDRESS", bus_.address());
    environment_.set("WAYLAND_DISPLAY", socketName);
    environment_.set("KWIN_COMPOSE", "Q");
    // The copy has no capabilities, which a container could not grant.
    std::filesystem::copy_file(program, folder_ / "kwin_wayland");
    start();
}

void KWinSession::start() {
    if (isOpenToAll_) environment_.set("KWIN_WAYLAND_NO_PERMISSION_CHECKS", "1");
    const auto socket = folder_ / socketName;
    std::filesystem::remove(socket);
    compositor_ = std::make_unique<ChildProcess>(
        std::vector<std::string>{(folder_ / "kwin_wayland").string(), "--virtual", "--width", "800", "--height", "600",
                                 "--no-global-shortcuts", "--no-kactivities", "--socket", socketName});
    if (!waitUntil([&] { return std::filesystem::exists(socket); }, 10s))
        throw std::runtime_error("kwin_wayland does not start");
    callScripting("isScriptLoaded", {"none"});
}

void KWinSession::focus(const std::string& appId) const {
    // KWin reads the file later, and takes no second script of the same name.
    static int number = 0;
    const auto file = folder_ / fmt::format("focus-{}.js", ++number);
    writeFile(file, fmt::format(focusScript, appId));
    callScripting("loadScript", {QString::fromStdString(file), QString::number(number)});
    callScripting("start", {});
}

void KWinSession::lock() const {
    call("org.freedesktop.ScreenSaver", "/ScreenSaver", "org.freedesktop.ScreenSaver", "Lock", {});
}

}  // namespace quorvane
