#pragma once

#include "desktop/support/ChildProcess.h"
#include "desktop/support/Environment.h"
#include "support/TemporaryFolder.h"

#include <memory>

namespace quorvane {

/// A Wayland session without a screen, for one test, and the environment that leads there, with a home of its own and
/// without buses. Whoever implements it starts the compositor.
class CompositorSession {
public:
    virtual ~CompositorSession() = default;

    virtual void start() = 0;
    void kill() { compositor_.reset(); }
    void send(int signal) const { compositor_->send(signal); }

    [[nodiscard]] Environment& environment() { return environment_; }
    [[nodiscard]] std::filesystem::path folder() const { return folder_.path(); }

protected:
    CompositorSession();

    TemporaryFolder folder_;
    Environment environment_;
    std::unique_ptr<ChildProcess> compositor_;
};

}  // namespace quorvane
