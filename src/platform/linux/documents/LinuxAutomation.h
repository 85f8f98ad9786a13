#pragma once

#include "platform/Automation.h"
#include "platform/RunningApplications.h"
#include "platform/linux/desktop/ApplicationIdentity.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace quorvane::platform {

/// Answers what a script asks without a script, from the window in front, its process, and the bus of the user's
/// session. Only a media player is also asked while another application is in front.
class LinuxAutomation final : public Automation {
public:
    /// The address of the front tab of a browser's window; none if it is not known. Comes back within 0.5 s.
    using BrowserAnswer =
        std::function<std::optional<std::string>(std::int64_t processIdentifier, const std::string& windowTitle)>;

    LinuxAutomation(RunningApplications& applications, const ApplicationIdentity& identity);

    [[nodiscard]] ScriptResult run(const Script& script) override;
    [[nodiscard]] std::optional<std::string> toldAddress() override;
    [[nodiscard]] std::string scriptIdentity(const std::string& bundleIdentifier) override {
        return identity_.documentModel(bundleIdentifier);
    }
    [[nodiscard]] Channel channel() override;

    /// Who is asked about browsers from now on; nobody if it is empty. From any thread, and called on any; one that was
    /// replaced may still be running.
    void setBrowserAnswer(BrowserAnswer answer);

private:
    [[nodiscard]] std::optional<std::string> browserURL(std::int64_t processIdentifier, const std::string& windowTitle);

    RunningApplications& applications_;
    const ApplicationIdentity& identity_;
    std::mutex mutex_;  ///< guards `browserAnswer_`
    std::shared_ptr<const BrowserAnswer> browserAnswer_;
};

}  // namespace quorvane::platform
