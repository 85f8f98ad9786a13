#pragma once

#include <atomic>

namespace quorvane::postgresql {

/// Says once and for all that nobody wants an answer any more, and wakes whoever waits for one. From any thread.
class CancelToken {
public:
    /// When the process has no file descriptor left it wakes nobody, who then finds out at the end of his patience.
    CancelToken() noexcept;
    CancelToken(const CancelToken&) = delete;
    CancelToken& operator=(const CancelToken&) = delete;
    ~CancelToken();

    void cancel() noexcept;
    [[nodiscard]] bool isCancelled() const noexcept { return isCancelled_.load(); }

    /// Readable from `cancel()` on; for `poll`, which passes over one below 0. Nobody reads it empty.
    [[nodiscard]] int descriptor() const noexcept { return descriptor_; }

private:
    int descriptor_;
    std::atomic<bool> isCancelled_{false};
};

}  // namespace quorvane::postgresql
