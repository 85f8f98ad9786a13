#pragma once

#include "platform/ReturnSource.h"
#include "platform/linux/x11/X11Connection.h"

namespace quorvane::platform {

/// An alarm on the X server's counter IDLETIME: the server tells when the counter falls, and nobody asks until then.
class SyncReturnSource final : public ReturnSource {
public:
    explicit SyncReturnSource(X11Connection& x11);

    [[nodiscard]] std::unique_ptr<ReturnWatch> watch(std::function<void()> returned) override;
    [[nodiscard]] Channel channel() const override;

private:
    class Alarm;

    X11Connection& x11_;
    std::uint32_t counter_ = 0;  ///< 0: the server has none
};

}  // namespace quorvane::platform
