#pragma once

#include "platform/Desktop.h"
#include "platform/RunLoop.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quorvane::platform {

/// The user's Linux desktop. It can always be made: what a machine, a session or a missing display does not offer is
/// refused, with the reason in its channel. Main thread only; needs `QtRunLoop`.
class LinuxDesktop final : public Desktop {
public:
    explicit LinuxDesktop(RunLoop& runLoop);
    LinuxDesktop(const LinuxDesktop&) = delete;
    LinuxDesktop& operator=(const LinuxDesktop&) = delete;
    ~LinuxDesktop() override;

    ForegroundSource& foreground() override;
    IdleSource& idle() override;
    ReturnSource& returns() override;
    KeyEventSource& keys() override;
    PointerEventSource& pointer() override;
    PresenceSource& presence() override;
    SystemEvents& systemEvents() override;
    SettingsPanes& settingsPanes() override;
    /// Hears from now on what browsers with our extension show; `say` gets lines for people, on the main thread. For
    /// the one process that tracks.
    void listenToBrowsers(const std::function<void(const std::string&)>& say);

    Accessibility& accessibility() override;
    Automation& automation() override;
    RunningApplications& runningApplications() override;
    ApplicationIcons& applicationIcons() override;
    [[nodiscard]] std::vector<Channel> sight() override;
    [[nodiscard]] std::vector<Channel> channels() override;

    /// What was wrong with the user's own files at the start, a line each; usually empty.
    [[nodiscard]] const std::vector<std::string>& notices() const;

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace quorvane::platform
