#pragma once

#include "base/Date.h"

namespace quorvane::platform {

/// Notices that somebody sends more than anybody can mean.
class SignalFlood {
public:
    explicit SignalFlood(int mostASecond) : mostASecond_(mostASecond) {}

    /// Counts one that has come at `uptime`. Is it one too many?
    [[nodiscard]] bool rises(Seconds uptime) {
        if (uptime - secondBegan_ > Seconds(1)) {
            secondBegan_ = uptime;
            count_ = 0;
        }
        return ++count_ > mostASecond_;
    }

    /// The next one begins a second anew.
    void ebb() { count_ = 0; }

private:
    int mostASecond_;
    int count_ = 0;
    Seconds secondBegan_{};
};

}  // namespace quorvane::platform
