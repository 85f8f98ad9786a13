#pragma once

#include "desktop/support/CompositorSession.h"

#include <string>

namespace quorvane {

/// A session of sway, which stands for all compositors on wlroots. Programs and input devices are what the test starts
/// (foot, wtype).
class SwaySession final : public CompositorSession {
public:
    SwaySession();

    void start() override;

    /// Gives the focus to the window of this application.
    void focus(const std::string& appId) const;
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
