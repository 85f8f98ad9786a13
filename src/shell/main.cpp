#include "base/Environment.h"
#include "base/TerminalText.h"
#include "cloud/module/CloudModule.h"
#include "diagnostics/AppLogger.h"
#include "diagnostics/ConsoleSink.h"
#include "diagnostics/SilentConsole.h"
#include "platform/linux/bus/DBusConnection.h"
#include "platform/linux/process/ProcessLock.h"
#include "platform/linux/system/LinuxSystemLog.h"
#ifdef QUORVANE_HAS_HTTP
#include "platform/linux/http/QtHttpClient.h"
#endif
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/system/XdgPaths.h"
#include "session/TrackerLock.h"
#include "shell/app/QuorvaneApp.h"
#include "shell/app/SingleInstance.h"
#include "shell/window/MainWindow.h"
#include "store/SafeModelContainer.h"

#include <QApplication>
#include <QIcon>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fmt/format.h>
#include <malloc.h>
#include <string_view>
#include <unistd.h>
#include <xcb/xcb.h>

namespace quorvane {
namespace {

constexpr int failed = 1;
constexpr int wrongUsage = 2;
constexpr int storeUnavailable = 3;

constexpr const char* usage = R"(Usage: quorvane [--background]

Records by itself which application has your attention.

  --background  track without a window, as at login
  --help        show this and leave
  --version     show the version and leave

Started while it runs, it brings its window to the front. quorvane-cli is the program for the command line.
)";

int refuse(int status, const std::string& reason) {
    fmt::print(stderr, "quorvane: {}\n", harmlessLine(reason));
    return status;
}

/// The lines of the services hold titles and paths in clear. Under a desktop standard output is the journal, which
/// keeps what it gets, so they are for a terminal and for those who ask for them.
std::unique_ptr<ConsoleSink> serviceConsole() {
    if (::isatty(STDOUT_FILENO) == 1 || environment("QUORVANE_CONSOLE") == "1")
        return std::make_unique<StreamConsole>(stdout);
    return std::make_unique<SilentConsole>();
}

/// Why no window can be shown; empty if one can. Qt would end the process without a word to people.
std::string displayProblem() {
    if (!environment("QT_QPA_PLATFORM").empty() || !environment("WAYLAND_DISPLAY").empty()) return {};
    constexpr const char* way = "; quorvane-cli track needs none";
    const auto display = environment("DISPLAY");
    if (display.empty()) return std::string("there is no display") + way;
    auto* connection = xcb_connect(nullptr, nullptr);
    const bool isUsable = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return isUsable ? std::string() : "the display " + display + " can't be used" + way;
}

/// What the desktop gave this start along, for the focus. Qt takes both out of the environment.
std::string activationToken() {
    const auto token = environment("XDG_ACTIVATION_TOKEN");
    return token.empty() ? environment("DESKTOP_STARTUP_ID") : token;
}

/// Qt says on standard error that it takes UTF-8 instead of the C locale, and which directory stands in for a missing
/// XDG_RUNTIME_DIR. Both are what we want, without the words.
void dropNotices(QtMsgType, const QMessageLogContext&, const QString& message) {
    if (message.startsWith(QLatin1String("Detected locale")) || message.startsWith(QLatin1String("QStandardPaths:")))
        return;
    fmt::print(stderr, "{}\n", harmlessLine(message.toStdString()));
}

std::unique_ptr<QApplication> makeApplication(int& argc, char** argv) {
    const auto before = qInstallMessageHandler(dropNotices);
    auto application = std::make_unique<QApplication>(argc, argv);
    qInstallMessageHandler(before);
    QApplication::setApplicationName(QStringLiteral("Quorvane"));
    QApplication::setApplicationDisplayName(QStringLiteral("Quorvane"));
    QApplication::setApplicationVersion(QStringLiteral(QUORVANE_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("org.zelkor.Quorvane"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/quorvane.svg")));
    QApplication::setQuitOnLastWindowClosed(QuorvaneAppDelegate::applicationShouldTerminateAfterLastWindowClosed());
    return application;
}

std::unique_ptr<platform::HttpClient> makeHttpClient() {
#ifdef QUORVANE_HAS_HTTP
    return std::make_unique<platform::QtHttpClient>("Quorvane/" QUORVANE_VERSION);
#else
    return nullptr;
#endif
}

/// Runs as the one process of the session that tracks into the store.
int runFirst(platform::QtRunLoop& runLoop, platform::DBusConnection& bus, SingleInstance& instance,
             bool isInBackground) {
    const auto folder = platform::XdgPaths::applicationData();
    if (!platform::XdgPaths::createPrivately(folder))
        return refuse(storeUnavailable, fmt::format("the folder {} can't be made", folder.string()));
    const auto file = folder / "quorvane.sqlite";
    const auto lock = platform::ProcessLock::tryAcquire(trackerLockFile(file), "quorvane");
    if (const auto* refusal = std::get_if<platform::ProcessLock::Refusal>(&lock))
        return refuse(failed, refusal->holder ? refusal->holder->description() + " tracks already" : refusal->reason);

    const ApplicationInfo application{.shortVersion = QUORVANE_VERSION, .build = QUORVANE_BUILD};
    const auto console = serviceConsole();
    platform::LinuxSystemLog systemLog;
    AppLogger logger(runLoop, systemLog, *console, application);
    AppLogger::setShared(&logger);
    SafeModelContainer::configure(
        {.file = file, .logger = &logger, .open = {}, .fatal = [](const std::string& message) {
             fmt::print(stderr, "{}\n", harmlessLine(message));
             std::exit(storeUnavailable);
         }});
    const int status = QuorvaneApp({.runLoop = runLoop,
                                    .sessionBus = bus,
                                    .singleInstance = instance,
                                    .logger = logger,
                                    .console = *console,
                                    .application = application,
                                    .makeMainWindow = [](AppServices& services) -> std::unique_ptr<QWidget> {
                                        return std::make_unique<MainWindow>(services);
                                    },
                                    .makeHttpClient = makeHttpClient,
                                    .cloud = CloudModule::cloudService()})
                           .run(isInBackground);
    AppLogger::setShared(nullptr);
    return status;
}

int run(int argc, char** argv, bool isInBackground) {
    // Nobody has to read along: lines that can't be written are lost, the time is not.
    std::signal(SIGPIPE, SIG_IGN);
    CloudModule::verifyServersByDefault();
    if (const auto problem = displayProblem(); !problem.empty()) return refuse(failed, problem);
    platform::DBusConnection::leaveHangingSession();
    const auto token = activationToken();
    const auto application = makeApplication(argc, argv);
    platform::QtRunLoop runLoop;
    auto bus = platform::DBusConnection::toSession();
    SingleInstance instance(bus);
    if (instance.role() != SingleInstance::Role::second) return runFirst(runLoop, bus, instance, isInBackground);
    // As login item there is nothing to show.
    if (isInBackground || instance.activateOther(token)) return EXIT_SUCCESS;
    return refuse(failed, "it runs already and does not answer");
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
    bool isInBackground = false;
    std::string_view asked;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--background")
            isInBackground = true;
        else if (argument == "--help" || argument == "--version")
            asked = argument;
        else
            return quorvane::refuse(quorvane::wrongUsage,
                                    fmt::format("unknown argument \"{}\"; --help shows what it takes", argument));
    }
    if (!asked.empty()) {
        fmt::print("{}", asked == "--help" ? quorvane::usage : "quorvane " QUORVANE_VERSION "\n");
        return EXIT_SUCCESS;
    }
    // The records of a month are megabytes: a fixed limit lets them go back to the system when they are let go, also
    // from the worker that has read them. By itself it grows with the largest block.
    mallopt(M_MMAP_THRESHOLD, 1 << 20);
    return quorvane::run(argc, argv, isInBackground);
}
