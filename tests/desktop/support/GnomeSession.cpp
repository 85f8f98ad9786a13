#include "desktop/support/GnomeSession.h"

#include "desktop/support/Waiting.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QStandardPaths>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <stdexcept>
#include <unistd.h>

namespace quorvane {
namespace {

constexpr const char* displayManager = "org.gnome.DisplayManager";
constexpr const char* testUuid = "test@quorvane.com";

std::string shellVersion() {
    const auto file = std::filesystem::temp_directory_path() / fmt::format("gnome-version-{}", ::getpid());
    static_cast<void>(run({"sh", "-c", "gnome-shell --version | grep -o '[0-9]*' | head -n 1 >" + file.string()}));
    std::string major;
    std::ifstream(file) >> major;
    std::filesystem::remove(file);
    return major;
}

/// The test's own extension, in the form that the shell understands.
void writeHelper(const std::filesystem::path& folder) {
    const std::string version = shellVersion();
    const bool isModule = version >= "45";
    const std::string body = contentOf(std::filesystem::path(QUORVANE_DESKTOP_DATA) / "gnome-test-extension/helper.js");
    std::filesystem::create_directories(folder);
    constexpr const char* imports = "const {Gio} = imports.gi;\nconst Main = imports.ui.main;\n"
                                    "const IBusManager = imports.misc.ibusManager;\n";
    constexpr const char* moduleImports =
        "import Gio from 'gi://Gio';\n"
        "import * as Main from 'resource:///org/gnome/shell/ui/main.js';\n"
        "import * as IBusManager from 'resource:///org/gnome/shell/misc/ibusManager.js';\n";
    writeFile(folder / "extension.js", isModule ? moduleImports + body + "export default Helper;\n"
                                                : imports + body + "function init() {\n    return new Helper();\n}\n");
    writeFile(folder / "metadata.json",
              fmt::format(R"({{"uuid": "{}", "name": "Test", "description": "Test", "shell-version": ["{}"]}})",
                          testUuid, version));
}

}  // namespace

bool GnomeSession::isInstalled() {
    return !QStandardPaths::findExecutable(QStringLiteral("gnome-shell")).isEmpty() &&
           !QStandardPaths::findExecutable(QStringLiteral("foot")).isEmpty();
}

GnomeSession::GnomeSession(const std::function<void()>& prepare)
    : displayManager_(displayManager, {"--system", displayManager, "/org/gnome/DisplayManager/Manager",
                                       std::string(displayManager) + ".Manager"}),
      bus_(QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                         QStringLiteral("gnome session"))) {
    displayManager_.call("/org/gnome/DisplayManager/Manager", BusMock::ownInterface, "AddProperty",
                         {QString::fromLatin1(displayManager) + ".Manager", QStringLiteral("Version"),
                          QVariant::fromValue(QDBusVariant(QStringLiteral("43.0")))});
    auto& environment = desktop_.environment();
    environment.set("XDG_CURRENT_DESKTOP", "GNOME");
    environment.set("XDG_SESSION_TYPE", "wayland");
    environment.set("XDG_CACHE_HOME", desktop_.dataHome() / "cache");
    environment.set("LIBGL_ALWAYS_SOFTWARE", "1");
    environment.set("GSETTINGS_BACKEND", "keyfile");
    environment.set("LC_ALL", "C.UTF-8");
    std::filesystem::create_directories(desktop_.configHome() / "glib-2.0/settings");
    writeFile(desktop_.configHome() / "glib-2.0/settings/keyfile",
              fmt::format("[org/gnome/shell]\nenabled-extensions=['{}']\nwelcome-dialog-last-shown-version='999'\n"
                          "[org/gnome/desktop/interface]\nenable-animations=false\n",
                          testUuid));
    writeHelper(desktop_.dataHome() / "gnome-shell/extensions" / testUuid);
    prepare();
    static_cast<void>(start());
}

GnomeSession::~GnomeSession() {
    QDBusConnection::disconnectFromBus(QStringLiteral("gnome session"));
}

bool GnomeSession::start() {
    desktop_.environment().set("WAYLAND_DISPLAY", "wayland-test");
    keyboard_.clear();
    // Without systemd the shell starts the input method with JavaScript between fork and exec, which now and then hangs
    // for good. The helper prevents that, unless the shell was faster.
    for (int tries = 0; tries < 4; ++tries) {
        shell_.reset();
        for (const char* left : {"wayland-test", "wayland-test.lock"})
            std::filesystem::remove(desktop_.runtimeDirectory() / left);
        shell_ = std::make_unique<ChildProcess>(
            std::vector<std::string>{"gnome-shell", "--headless", "--wayland", "--no-x11", "--wayland-display",
                                     "wayland-test", "--virtual-monitor", "800x600"});
        const auto isUp = [this] {
            return bus_.interface()->isServiceRegistered(QStringLiteral("com.quorvane.Test")).value();
        };
        if (waitUntil(isUp, 8s)) return true;
    }
    shell_.reset();
    return false;
}

QVariant GnomeSession::call(const char* service, const QString& path, const char* interface, const char* method,
                            const QVariantList& arguments) {
    auto question = QDBusMessage::createMethodCall(QString::fromLatin1(service), path, QString::fromLatin1(interface),
                                                   QString::fromLatin1(method));
    question.setArguments(arguments);
    const auto answer = bus_.call(question, QDBus::Block, 5000);
    if (answer.type() == QDBusMessage::ErrorMessage)
        throw std::runtime_error(fmt::format("{}: {}", method, answer.errorMessage().toStdString()));
    return answer.arguments().value(0);
}

void GnomeSession::focus(const std::string& application) {
    if (!call("com.quorvane.Test", QStringLiteral("/com/quorvane/Test"), "com.quorvane.Test1", "Activate",
              {QString::fromStdString(application)})
             .toBool())
        throw std::runtime_error("there is no window of " + application);
}

void GnomeSession::type() {
    constexpr const char* service = "org.gnome.Mutter.RemoteDesktop";
    constexpr const char* session = "org.gnome.Mutter.RemoteDesktop.Session";
    constexpr uint leftShift = 42;
    if (keyboard_.isEmpty()) {
        keyboard_ = call(service, QStringLiteral("/org/gnome/Mutter/RemoteDesktop"), service, "CreateSession")
                        .value<QDBusObjectPath>()
                        .path();
        call(service, keyboard_, session, "Start");
    }
    for (const bool isDown : {true, false})
        call(service, keyboard_, session, "NotifyKeyboardKeycode", {leftShift, isDown});
}

}  // namespace quorvane
