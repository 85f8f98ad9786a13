#include "cloud/postgresql/CancelToken.h"

#include <cerrno>
#include <cstdint>
#include <sys/eventfd.h>
#include <system_error>
#include <unistd.h>

namespace quorvane::postgresql {

CancelToken::CancelToken() noexcept : descriptor_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

CancelToken::~CancelToken() {
    if (descriptor_ >= 0) close(descriptor_);
}

void CancelToken::cancel() noexcept {
    isCancelled_.store(true);
    const std::uint64_t one = 1;
    // Fails only when the count is at its end, and then it is readable already.
    [[maybe_unused]] const auto written = write(descriptor_, &one, sizeof one);
}

}  // namespace quorvane::postgresql
