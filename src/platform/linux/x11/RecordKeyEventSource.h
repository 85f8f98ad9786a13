#pragma once

#include "platform/KeyEventSource.h"
#include "platform/linux/x11/X11Connection.h"

namespace quorvane::platform {

/// Key events by the RECORD extension, the one that also reports the repeats of a held key and what happens during a
/// grab. Of an event nothing is read but that it came.
class RecordKeyEventSource final : public KeyEventSource {
public:
    explicit RecordKeyEventSource(X11Connection& x11) : x11_(x11) {}

    [[nodiscard]] std::unique_ptr<KeyEventTap> createTap(KeyEvents events, std::function<void()> heard) override;
    [[nodiscard]] Channel channel() const override;

private:
    X11Connection& x11_;
};

}  // namespace quorvane::platform
