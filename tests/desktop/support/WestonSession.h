#pragma once

#include "desktop/support/CompositorSession.h"

namespace quorvane {

/// Weston, which tells nobody of its windows.
class WestonSession final : public CompositorSession {
public:
    WestonSession();
    void start() override;
};

}  // namespace quorvane
