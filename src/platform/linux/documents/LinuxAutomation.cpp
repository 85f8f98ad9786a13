#include "platform/linux/documents/LinuxAutomation.h"

#include "base/Text.h"
#include "platform/linux/bus/MprisTrack.h"
#include "platform/linux/bus/SessionBusQuestions.h"
#include "platform/linux/documents/DocumentFromTitle.h"
#include "platform/linux/documents/DocumentTitle.h"
#include "platform/linux/documents/FrontFolder.h"
#include "platform/linux/documents/TerminalDirectory.h"
#include "platform/linux/process/Proc.h"

#include <fmt/format.h>
#include <utility>
#include <vector>

namespace quorvane::platform {
namespace {

/// A run may take a second; what comes after the last answer has the rest.
constexpr Seconds patience = 0.9s;

constexpr std::string_view terminalModel = "com.apple.utilities.terminal";

ScriptError unreachable(std::string message) {
    return {.number = -600, .message = std::move(message)};
}
ScriptError noAnswer(std::string message) {
    return {.number = -1728, .message = std::move(message)};
}

ScriptResult textOr(std::string text, std::string_view problem, const Script& script) {
    if (text.empty()) return noAnswer(fmt::format("{}: {}", script.applicationName, problem));
    return text;
}

/// By what names a title may call the application: "org.gnome.gedit" is also "gedit".
std::vector<std::string> namesOf(const RunningApplication& application) {
    std::vector<std::string> names;
    if (application.localizedName) names.push_back(*application.localizedName);
    if (const auto& id = application.bundleIdentifier) {
        names.push_back(*id);
        names.push_back(id->substr(id->rfind('.') + 1));
    }
    return names;
}

bool isFor(const Script& script, const RunningApplication& application) {
    return script.bundleIdentifier.empty() ||
           text::equalsIgnoringCase(script.bundleIdentifier, application.bundleIdentifier.value_or(""));
}

std::string currentTrack(SessionBusQuestions& bus, const ApplicationIdentity& identity, pid_t pid,
                         const std::string& bundleIdentifier) {
    const auto isApplication = [&](const std::string& desktopId) {
        return !desktopId.empty() && text::equalsIgnoringCase(identity.bundleIdentifier(desktopId), bundleIdentifier);
    };
    const auto track = mprisTrack(bus, pid, isApplication);
    if (!track) return {};
    return track->title.empty() ? std::filesystem::path(track->file).filename().string() : track->title;
}

/// A terminal's directory goes first where it is known as one: its title may hold any word, and a file of that name be
/// open.
std::string document(SessionBusQuestions& bus, const ApplicationIdentity& identity, const RunningApplication& front,
                     pid_t pid) {
    if (identity.documentModel(front.bundleIdentifier.value_or("")) == terminalModel)
        if (const auto directory = terminalDirectory(pid, front.windowTitle); !directory.empty())
            return directory.string();
    auto name = DocumentTitle::documentName(front.windowTitle, namesOf(front));
    const DocumentOwner owner{.pid = pid,
                              .programs = pid > 0 ? Proc::programNames(pid)
                                                  : identity.names({front.bundleIdentifier, front.localizedName})};
    const auto path = documentFromTitle(bus, owner, front.windowTitle, name);
    return path.empty() ? std::move(name) : path.string();
}

}  // namespace

LinuxAutomation::LinuxAutomation(RunningApplications& applications, const ApplicationIdentity& identity)
    : applications_(applications), identity_(identity) {}

ScriptResult LinuxAutomation::run(const Script& script) {
    SessionBusQuestions bus{Deadline(patience)};
    if (script.family == ScriptFamily::permissionTest)
        return bus.isThere() ? ScriptResult() : unreachable("the bus of the user's session does not answer");
    const auto front = applications_.frontmost();
    if (!front || !isFor(script, *front)) {
        if (script.bundleIdentifier.empty() || !applications_.isRunning(script.bundleIdentifier))
            return unreachable(fmt::format("{} has no window", script.applicationName));
        if (script.family != ScriptFamily::currentTrack)
            return noAnswer(fmt::format("{} is not in front", script.applicationName));
        return textOr(currentTrack(bus, identity_, 0, script.bundleIdentifier), "nothing plays", script);
    }
    const auto pid = static_cast<pid_t>(front->processIdentifier);
    // Where nobody tells the process, 0, the title may do; one of another machine names that one's files.
    if (pid < 0 || applications_.isTerminated(pid) || front->bundleIdentifier == loginWindowBundleId)
        return unreachable(fmt::format("{} has no process on this machine", script.applicationName));
    const auto& title = front->windowTitle;
    switch (script.family) {
    case ScriptFamily::browserURL:
        return textOr(browserURL(pid, title).value_or(""), "the browser does not tell its address", script);
    case ScriptFamily::frontDocumentPath:
    case ScriptFamily::officeDocument:
    case ScriptFamily::developmentDocument:
        return textOr(text::validUtf8(document(bus, identity_, *front, pid)), "nothing tells the document", script);
    case ScriptFamily::frontDocumentName:
        return textOr(DocumentTitle::documentName(title, namesOf(*front)), "the title names no document", script);
    case ScriptFamily::currentTrack:
        return textOr(currentTrack(bus, identity_, pid, front->bundleIdentifier.value_or("")), "nothing plays", script);
    case ScriptFamily::frontFolder:
        return textOr(text::validUtf8(frontFolder(bus, pid, title, namesOf(*front)).string()),
                      "nothing tells the folder", script);
    case ScriptFamily::permissionTest: break;
    }
    return std::string();
}

std::optional<std::string> LinuxAutomation::browserURL(std::int64_t processIdentifier, const std::string& windowTitle) {
    std::unique_lock lock(mutex_);
    const auto answer = browserAnswer_;
    lock.unlock();
    return answer ? (*answer)(processIdentifier, windowTitle) : std::nullopt;
}

std::optional<std::string> LinuxAutomation::toldAddress() {
    const auto front = applications_.frontmost();
    return front ? browserURL(front->processIdentifier, front->windowTitle) : std::nullopt;
}

Channel LinuxAutomation::channel() {
    Channel channel{
        .question = "automation", .name = "D-Bus session bus, /proc, window titles", .gives = Sight::documents};
    channel.isAvailable = SessionBusQuestions{Deadline(patience)}.isThere();
    if (channel.isAvailable) return channel;
    channel.reason = "the bus of the user's session does not answer, so media players and file managers can't be asked";
    channel.remedy = "Start it inside the desktop session, where DBUS_SESSION_BUS_ADDRESS is set.";
    return channel;
}

void LinuxAutomation::setBrowserAnswer(BrowserAnswer answer) {
    auto shared = answer ? std::make_shared<const BrowserAnswer>(std::move(answer)) : nullptr;
    const std::lock_guard lock(mutex_);
    browserAnswer_ = std::move(shared);
}

}  // namespace quorvane::platform
