#pragma once

#include "desktop/support/ChildProcess.h"
#include "desktop/support/Environment.h"
#include "support/TemporaryFolder.h"

#include <memory>
#include <string>
#include <vector>

namespace quorvane {

/// A Wayland session without a screen, for one test, and the environment that leads there: the compositor sway, which
/// stands for all on wlroots. Programs and input devices are what the test starts (foot, wtype).
class SwaySession {
public:
    SwaySession();
    SwaySession(const SwaySession&) = delete;
    SwaySession& operator=(const SwaySession&) = delete;

    void start();
    void kill() { sway_.reset(); }
    void send(int signal) const { sway_->send(signal); }

    /// Gives the focus to the window of this application.
    void focus(const std::string& appId) const;

    [[nodiscard]] Environment& environment() { return environment_; }
    [[nodiscard]] std::filesystem::path folder() const { return folder_.path(); }

private:
    TemporaryFolder folder_;
    Environment environment_;
    std::unique_ptr<ChildProcess> sway_;
};

/// A window in it, with a title that can change.
class FootWindow {
public:
    FootWindow(const SwaySession& session, const std::string& appId, const std::string& title);
    void setTitle(const std::string& title) const;

private:
    std::string pipe_;
    ChildProcess process_;
};

}  // namespace quorvane
