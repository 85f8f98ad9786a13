#pragma once

#include "platform/Desktop.h"
#include "platform/simulated/FrontRunningApplications.h"
#include "platform/simulated/SimulatedAccessibility.h"
#include "platform/simulated/SimulatedAutomation.h"
#include "platform/simulated/SimulatedForeground.h"
#include "platform/simulated/SimulatedInput.h"
#include "platform/simulated/SimulatedPresence.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedSession.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::platform {

/// A desktop on which a script plays user, window manager and machine. Observers are called before an operation
/// returns. An application that comes to the front is no input.
class SimulatedDesktop : public Desktop {
public:
    explicit SimulatedDesktop(SimulatedRunLoop& runLoop) : runLoop_(runLoop), idle_(runLoop) {}

    ForegroundSource& foreground() override { return foreground_; }
    IdleSource& idle() override { return idle_; }
    ReturnSource& returns() override { return returns_; }
    KeyEventSource& keys() override { return keys_; }
    PointerEventSource& pointer() override { return pointer_; }
    SimulatedPresence& presence() override { return presence_; }
    SystemEvents& systemEvents() override { return systemEvents_; }
    SimulatedSettingsPanes& settingsPanes() override { return settingsPanes_; }
    ApplicationIcons& applicationIcons() override { return applicationIcons_; }
    SimulatedAccessibility& accessibility() override { return accessibility_; }
    SimulatedAutomation& automation() override { return automation_; }
    RunningApplications& runningApplications() override { return runningApplications_; }
    std::vector<Channel> sight() override {
        auto channels = furtherSight_;
        channels.insert(channels.begin(), foreground_.channel());
        return channels;
    }
    std::vector<Channel> channels() override { return sight(); }

    // Applications

    /// Makes the application frontmost and sends its activation.
    void bringToFront(std::optional<std::string> bundleId, std::optional<std::string> name);

    /// An activation that names no application; what is in front stays.
    void sendMalformedActivation();

    /// Changes the answer and tells nobody.
    void setFrontmostSilently(std::optional<std::string> bundleId, std::optional<std::string> name);

    /// Whether what is in front can be seen, and why not.
    void setForegroundChannel(Channel channel) { foreground_.setChannel(std::move(channel)); }

    /// What else tells of what is in front; until this is called all that there is.
    void setFurtherSight(std::vector<Channel> channels) { furtherSight_ = std::move(channels); }

    /// No window has the focus; tells nobody.
    void noFrontmost();

    /// The last window that had the focus goes, and the desktop says so.
    void closeLastWindow();

    /// The title of the application's front window; without an application, of the one in front.
    void setWindowTitle(std::optional<std::string> title);
    void setWindowTitle(std::string bundleId, std::optional<std::string> title);

    // Input. All of it ends the system's idle time.

    void pressKey();
    void releaseKey();

    enum class Over { otherApplication, ownWindow };
    void click(Over over = Over::otherApplication);
    void scroll(Over over = Over::otherApplication);

    /// The monitors don't hear of it.
    void movePointer(Point position);

    /// From now until `end` a key goes down and up every `interval` (> 0 s), first at once and last at `end`, by a work
    /// item of the run loop. Replaces an earlier typist.
    void typeUntil(Date end, Seconds interval = 10s);
    void typeUntil(std::string_view time, Seconds interval = 10s) { typeUntil(runLoop_.timeOfDay(time), interval); }
    void stopTyping() { typist_.reset(); }

    /// What the system says of its idle time from now on; none: what the script did.
    void setIdleReading(std::optional<Seconds> reading) { idle_.setReading(reading); }

    // Refusals, each until taken back. What already listens goes on.

    void refuseKeys(bool refused = true) { keys_.refuse(refused); }

    /// Taps for key down alone are granted, those for key down and up refused.
    void refuseSecondTap(bool refused = true) { keys_.refuseDownAndUp(refused); }
    void refuseAttach(bool refused = true) { keys_.refuseAttach(refused); }
    void refuseReturns(bool refused = true) { returns_.refuse(refused); }
    void refuseGlobalPointer(bool refused = true) { pointer_.refuseGlobal(refused); }
    void refuseLocalPointer(bool refused = true) { pointer_.refuseLocal(refused); }

    // Machine and session

    void willSleep() { systemEvents_.send(SystemEvent::willSleep); }
    void didWake() { systemEvents_.send(SystemEvent::didWake); }
    void screensSleep() { systemEvents_.send(SystemEvent::screensDidSleep); }
    void screensWake() { systemEvents_.send(SystemEvent::screensDidWake); }

    void switchAway() { systemEvents_.send(SystemEvent::sessionDidLeave); }
    void switchBack() { systemEvents_.send(SystemEvent::sessionDidReturn); }

    /// What the tracker says of input; a script may take back a lock that nobody ended.
    [[nodiscard]] Signal<>& inputNoted() { return systemEvents_.inputNoted; }

    /// The login window becomes the frontmost answer (see `setLockerShowsLoginWindow`), then the event is sent.
    /// Applications may come to the front beneath it.
    void lock();
    void unlock();

    /// Whether a locked session answers with the login window, as the contract of `ForegroundSource` says, or goes on
    /// naming the application beneath the locker, as a desktop whose lock goes unnoticed does.
    void setLockerShowsLoginWindow(bool shows) { lockerShowsLoginWindow_ = shows; }

    // What the system under test did

    [[nodiscard]] const std::vector<std::string>& openedPanes() const { return settingsPanes_.opened(); }
    [[nodiscard]] int activationObservers() const { return foreground_.observers(); }
    [[nodiscard]] int systemEventObservers() const { return systemEvents_.observers(); }
    [[nodiscard]] int returnWatches() const { return returns_.waiting(); }
    [[nodiscard]] int keyTaps() const { return keys_.taps(); }
    [[nodiscard]] int globalPointerMonitors() const { return pointer_.globalMonitors(); }
    [[nodiscard]] int localPointerMonitors() const { return pointer_.localMonitors(); }

private:
    void noteInput();
    void act(Over over);
    void type(Date end, Seconds interval);

    SimulatedRunLoop& runLoop_;
    SimulatedForeground foreground_;
    SimulatedIdle idle_;
    SimulatedReturns returns_;
    SimulatedKeys keys_;
    SimulatedPointer pointer_;
    SimulatedPresence presence_;
    SimulatedSystemEvents systemEvents_;
    SimulatedSettingsPanes settingsPanes_;
    SimulatedApplicationIcons applicationIcons_;
    SimulatedAccessibility accessibility_;
    SimulatedAutomation automation_;
    FrontRunningApplications runningApplications_{foreground_};
    std::vector<Channel> furtherSight_{
        {.question = "window titles", .name = "simulated", .isAvailable = true, .gives = Sight::titles},
        {.question = "documents", .name = "simulated", .isAvailable = true, .gives = Sight::documents},
        {.question = "page in front", .name = "simulated", .isAvailable = true, .gives = Sight::pages}};
    bool lockerShowsLoginWindow_ = true;
    std::unique_ptr<WorkItem> typist_;
};

}  // namespace quorvane::platform
