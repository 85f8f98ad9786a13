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

void callScripting(const char* method, const QVariantList& arguments) {
    constexpr const char* name = "a test's scripts";
    {
        auto bus = QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), name);
        auto message = QDBusMessage::createMethodCall(QStringLiteral("org.kde.KWin"), QStringLiteral("/Scripting"),
                                                      QStringLiteral("org.kde.kwin.Scripting"), method);
        message.setArguments(arguments);
        if (bus.call(message, QDBus::Block, 5000).type() != QDBusMessage::ReplyMessage)
            throw std::runtime_error(std::string("KWin refuses ") + method);
    }
    QDBusConnection::disconnectFromBus(name);
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
    compositor_ = std::make_unique<ChildProcess>(std::vector<std::string>{
        (folder_ / "kwin_wayland").string(), "--virtual", "--width", "800", "--height", "600", "--no-lockscreen",
        "--no-global-shortcuts", "--no-kactivities", "--socket", socketName});
    if (!waitUntil([&] { return std::filesystem::exists(socket); }, 10s))
        throw std::runtime_error("kwin_wayland does not start");
}

void KWinSession::focus(const std::string& appId) const {
    // KWin reads the file later, and takes no second script of the same name.
    static int number = 0;
    const auto file = folder_ / fmt::format("focus-{}.js", ++number);
    writeFile(file, fmt::format(focusScript, appId));
    callScripting("loadScript", {QString::fromStdString(file), QString::number(number)});
    callScripting("start", {});
}

}  // namespace quorvane
