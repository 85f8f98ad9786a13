#include "platform/linux/loop/UnixSignals.h"

#include <QSocketNotifier>
#include <atomic>
#include <cassert>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

namespace quorvane::platform {
namespace {

/// Where the handler writes. A signal may interrupt any thread, so it only leaves its number there.
std::atomic<int> writingEnd = -1;
static_assert(std::atomic<int>::is_always_lock_free);

extern "C" void leaveSignalNumber(int signal) {
    const int before = errno;
    const auto number = static_cast<unsigned char>(signal);
    // A full pipe already holds enough to wake the loop.
    [[maybe_unused]] const auto written = write(writingEnd, &number, 1);
    errno = before;
}

}  // namespace

struct UnixSignals::Impl {
    int readingEnd = -1;
    std::function<void(int)> received;
    std::unique_ptr<QSocketNotifier> notifier;
    std::vector<std::pair<int, struct sigaction>> before;
};

UnixSignals::UnixSignals(std::initializer_list<int> signals, std::function<void(int)> received)
    : impl_(std::make_unique<Impl>()) {
    assert(writingEnd == -1);
    int ends[2];
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
        throw std::system_error(errno, std::generic_category(), "no pipe for signals");
    impl_->readingEnd = ends[0];
    writingEnd = ends[1];
    impl_->received = std::move(received);
    impl_->notifier = std::make_unique<QSocketNotifier>(ends[0], QSocketNotifier::Read);
    QObject::connect(impl_->notifier.get(), &QSocketNotifier::activated, impl_->notifier.get(), [impl = impl_.get()] {
        unsigned char number = 0;
        if (read(impl->readingEnd, &number, 1) == 1) impl->received(number);
    });
    for (const int signal : signals) {
        struct sigaction action {};
        action.sa_handler = leaveSignalNumber;
        action.sa_flags = SA_RESTART;
        struct sigaction old {};
        if (sigaction(signal, &action, &old) == 0) impl_->before.emplace_back(signal, old);
    }
}

UnixSignals::~UnixSignals() {
    for (const auto& [signal, action] : impl_->before)
        sigaction(signal, &action, nullptr);
    impl_->notifier.reset();
    close(writingEnd.exchange(-1));
    close(impl_->readingEnd);
}

}  // namespace quorvane::platform
