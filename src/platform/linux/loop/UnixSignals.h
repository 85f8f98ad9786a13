#pragma once

#include <functional>
#include <initializer_list>
#include <memory>

namespace quorvane::platform {

/// Brings signals of the operating system (SIGINT, SIGTERM) to the main run loop. While it lives they no longer end the
/// process. One object at a time; main thread only.
class UnixSignals {
public:
    /// Calls `received` with the signal's number, in a turn of the loop.
    UnixSignals(std::initializer_list<int> signals, std::function<void(int)> received);
    UnixSignals(const UnixSignals&) = delete;
    UnixSignals& operator=(const UnixSignals&) = delete;
    ~UnixSignals();  ///< What the signals did before, they do again.

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace quorvane::platform
