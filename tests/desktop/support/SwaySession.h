#pragma once

#include "desktop/support/CompositorSession.h"

#include <string>

namespace quorvane {

/// A session of sway, which stands for all compositors on wlroots. Programs and input devices are what the test starts
/// (foot, wtype).
class SwaySession final : public CompositorSession {
public:
    /// With `hasX11` sway has a place for programs that know no Wayland, if it starts them itself.
    explicit SwaySession(bool hasX11 = false);

    void start() override;

    /// Has sway start a program.
    void exec(const std::string& command) const;

    /// Gives the focus to the window of this application.
    void focus(const std::string& appId) const;
    void focusTitled(const std::string& title) const;
};

}  // namespace quorvane
