#include "platform/linux/session/LinuxDesktop.h"

#include "browserhost/BrowserSocket.h"
#include "platform/linux/accessibility/AtspiAccessibility.h"
#include "platform/linux/browsers/BrowserMessages.h"
#include "platform/linux/bus/LinuxPresenceSource.h"
#include "platform/linux/desktop/ApplicationIdentity.h"
#include "platform/linux/desktop/DesktopSettingsPanes.h"
#include "platform/linux/documents/LinuxAutomation.h"
#include "platform/linux/session/DisplaySession.h"
#include "platform/linux/session/LinuxSystemEvents.h"
#include "platform/linux/session/WindowSources.h"
#include "platform/linux/system/LinuxSystemLog.h"
#include "platform/linux/system/WholeFile.h"
#include "platform/linux/system/XdgPaths.h"
#include "platform/linux/x11/RecordKeyEventSource.h"
#include "platform/linux/x11/XInputPointerEventSource.h"

namespace quorvane::platform {
namespace {

/// The built-in table, extended by the user's own if there is one. A faulty one is left out, with a line in `notices`.
IdentityTable identityTable(std::vector<std::string>& notices) {
    auto table = IdentityTable::builtIn();
    const auto file = XdgPaths::applicationConfig() / "identities.json";
    std::error_code error;
    if (!std::filesystem::exists(file, error)) return table;
    const auto json = wholeFile(file);
    const auto problem = json ? table.extend(*json) : std::optional<std::string>("it cannot be read");
    if (problem) notices.push_back(file.string() + " is ignored: " + *problem);
    return table;
}

}  // namespace

struct LinuxDesktop::Parts {
    explicit Parts(RunLoop& loop)
        : runLoop(loop), x11(connectToDisplay()), entries(XdgPaths::dataDirectories()),
          identity(entries, identityTable(notices)), sessionEvents(loop), systemEvents(sessionEvents, *x11),
          windows(WindowSources::make(loop, *x11, identity, sessionEvents)), keys(*x11), pointer(*x11),
          automation(windows.applications, identity), presence(windows.applications, identity),
          activation(windows.foreground.observeActivation([this](const auto&) { lastActivation = runLoop.now(); })) {
        accessibility.setFront([this] { return frontWindow(); });
    }

    /// From any thread.
    [[nodiscard]] std::optional<FrontWindow> frontWindow() {
        const auto front = windows.applications.frontmost();
        if (!front) return std::nullopt;
        return FrontWindow{.processIdentifier = front->processIdentifier,
                           .title = front->windowTitle,
                           .names = identity.names({front->bundleIdentifier, front->localizedName})};
    }

    /// Of the window in front: that it is there is a sign, too.
    [[nodiscard]] Channel frontChannel() {
        auto channel = windows.foreground.channel();
        channel.lastSign = lastActivation;
        return channel;
    }
    [[nodiscard]] Channel idleChannel() {
        auto channel = windows.idle.channel();
        const Seconds untouched = windows.idle.secondsSinceLastInput();
        if (channel.isAvailable && untouched >= 0s) channel.lastSign = runLoop.now() - untouched;
        return channel;
    }

    [[nodiscard]] Channel pageChannel() const {
        if (browserMessages) return browserMessages->channel();
        return {
            .question = "page in front", .name = "browser extension", .reason = "only a tracker listens to browsers"};
    }

    RunLoop& runLoop;
    std::vector<std::string> notices;
    std::unique_ptr<X11Connection> x11;
    DesktopEntries entries;
    ApplicationIdentity identity;
    SessionEvents sessionEvents;
    LinuxSystemEvents systemEvents;
    WindowSources windows;
    RecordKeyEventSource keys;
    XInputPointerEventSource pointer;
    DesktopSettingsPanes settingsPanes;
    AtspiAccessibility accessibility;
    std::unique_ptr<BrowserMessages> browserMessages;  ///< none until somebody listens
    LinuxAutomation automation;
    LinuxPresenceSource presence;
    LinuxSystemLog systemLog;
    std::optional<Date> lastActivation;
    Subscription activation;
};

LinuxDesktop::LinuxDesktop(RunLoop& runLoop) : parts_(std::make_unique<Parts>(runLoop)) {}

LinuxDesktop::~LinuxDesktop() = default;

void LinuxDesktop::listenToBrowsers(const std::function<void(const std::string&)>& say) {
    auto& messages = parts_->browserMessages;
    messages = std::make_unique<BrowserMessages>(BrowserSocket::path(), say);
    if (!messages->problem().empty()) return say(messages->problem());
    parts_->windows.applications.setVoucher([&messages](std::int64_t processIdentifier, const std::string& title) {
        return messages->isOrdinary(processIdentifier, title);
    });
    parts_->automation.setBrowserAnswer([&messages](std::int64_t processIdentifier, const std::string& windowTitle) {
        return messages->url(processIdentifier, windowTitle);
    });
}

ForegroundSource& LinuxDesktop::foreground() {
    return parts_->windows.foreground;
}
IdleSource& LinuxDesktop::idle() {
    return parts_->windows.idle;
}
ReturnSource& LinuxDesktop::returns() {
    return parts_->windows.returns;
}
KeyEventSource& LinuxDesktop::keys() {
    return parts_->keys;
}
PointerEventSource& LinuxDesktop::pointer() {
    return parts_->pointer;
}
PresenceSource& LinuxDesktop::presence() {
    return parts_->presence;
}
SystemEvents& LinuxDesktop::systemEvents() {
    return parts_->systemEvents;
}
SettingsPanes& LinuxDesktop::settingsPanes() {
    return parts_->settingsPanes;
}

Accessibility& LinuxDesktop::accessibility() {
    return parts_->accessibility;
}
Automation& LinuxDesktop::automation() {
    return parts_->automation;
}
RunningApplications& LinuxDesktop::runningApplications() {
    return parts_->windows.applications;
}

ApplicationIcons& LinuxDesktop::applicationIcons() {
    return parts_->identity;
}

std::vector<Channel> LinuxDesktop::sight() {
    // Where nobody else tells of documents, titles and processes are there to be read.
    const Channel documents{
        .question = "documents", .name = "titles and /proc", .isAvailable = true, .gives = Sight::documents};
    return {parts_->frontChannel(), parts_->windows.titleChannel(), documents, parts_->pageChannel()};
}

std::vector<Channel> LinuxDesktop::channels() {
    const auto& windows = parts_->windows;
    std::vector<Channel> channels{parts_->frontChannel(),    windows.titleChannel(), parts_->idleChannel(),
                                  windows.returns.channel(), parts_->keys.channel(), parts_->pointer.channel()};
    for (auto& channel : parts_->systemEvents.channels())
        channels.push_back(std::move(channel));
    channels.push_back(parts_->presence.channel());
    channels.push_back(parts_->accessibility.channel());
    channels.push_back(parts_->automation.channel());
    channels.push_back(parts_->pageChannel());
    channels.push_back(parts_->systemLog.channel());
    return channels;
}

const std::vector<std::string>& LinuxDesktop::notices() const {
    return parts_->notices;
}

}  // namespace quorvane::platform
