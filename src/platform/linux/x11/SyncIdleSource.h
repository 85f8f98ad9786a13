#pragma once

#include "platform/IdleSource.h"
#include "platform/linux/x11/X11Connection.h"

namespace quorvane::platform {

/// The X server's counter IDLETIME, which the extension SYNC shows.
class SyncIdleSource final : public IdleSource {
public:
    explicit SyncIdleSource(X11Connection& x11);

    [[nodiscard]] Seconds secondsSinceLastInput() override;
    [[nodiscard]] Channel channel() const override;

private:
    X11Connection& x11_;
    std::uint32_t counter_ = 0;  ///< 0: the server has none
};

}  // namespace quorvane::platform
