#pragma once

#include <atomic>

namespace quorvane::postgresql {

/// Says once and for all that nobody wants an answer any more, and wakes whoever waits for one. From any thread.
class CancelToken {
public:
    CancelToken();  ///< Throws `std::system_error` when the process has no file descriptor left.
    CancelToken(const CancelToken&) = delete;
    CancelToken& operator=(const CancelToken&) = delete;
    ~CancelToken();

    void cancel() noexcept;
    [[nodiscard]] bool isCancelled() const noexcept { return isCancelled_.load(); }

    /// Readable from `cancel()` on; for `poll`. Nobody reads it empty.
    [[nodiscard]] int descriptor() const noexcept { return descriptor_; }

private:
    int descriptor_;
    std::atomic<bool> isCancelled_{false};
};

}  // namespace quorvane::postgresql
