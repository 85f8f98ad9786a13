#pragma once

#include "desktop/support/CompositorSession.h"
#include "desktop/support/PrivateBus.h"

#include <string>

namespace quorvane {

/// A session of KWin with a session bus. Windows and input are the test's own.
class KWinSession final : public CompositorSession {
public:
    /// Is it installed? Nothing of this works without.
    [[nodiscard]] static bool isThere();

    /// Where everybody may do everything, programs may send input.
    explicit KWinSession(bool isOpenToAll = false);

    void start() override;

    /// Gives the focus to the window of this application.
    void focus(const std::string& appId) const;

    void lock() const;

    [[nodiscard]] const PrivateBus& bus() const { return bus_; }

private:
    bool isOpenToAll_;
    PrivateBus bus_;
};

}  // namespace quorvane
