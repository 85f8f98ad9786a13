#include "browserhost/BrowserHost.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fmt/format.h>
#include <poll.h>
#include <sys/timerfd.h>
#include <system_error>
#include <unistd.h>

namespace quorvane {
namespace {

constexpr long interval = 20'000'000;  // nanoseconds between messages that are passed on

std::system_error lastError(const char* what) {
    return {errno, std::generic_category(), what};
}

}  // namespace

BrowserHost::BrowserHost(int input, std::optional<std::filesystem::path> socket, pid_t browser)
    : input_(input), interval_(::timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)), browser_(browser),
      tracker_(std::move(socket)) {
    if (interval_ < 0) throw lastError("no timer");
}

BrowserHost::~BrowserHost() {
    ::close(interval_);
}

void BrowserHost::run() {
    for (;;) {
        std::array<pollfd, 2> ready{{{input_, POLLIN, 0}, {isIntervalRunning_ ? interval_ : -1, POLLIN, 0}}};
        if (::poll(ready.data(), ready.size(), -1) < 0) {
            if (errno == EINTR) continue;
            throw lastError("cannot wait for input");
        }
        if (ready[0].revents != 0 && !readInput()) return;
        if (ready[1].revents != 0) isIntervalRunning_ = false;
        if (waiting_ && !isIntervalRunning_) passOn();
    }
}

bool BrowserHost::readInput() {
    std::array<char, 1 << 16> piece;
    const ssize_t got = ::read(input_, piece.data(), piece.size());
    if (got < 0 && (errno == EINTR || errno == EAGAIN)) return true;
    if (got < 0) throw lastError("cannot read standard input");
    if (got == 0) return false;
    messages_.append({piece.data(), static_cast<std::size_t>(got)});
    while (const auto message = messages_.next())
        take(*message);
    if (const auto length = messages_.refusedLength())
        throw std::runtime_error(
            fmt::format("a message of {} bytes is longer than {}", *length, NativeMessages::longest));
    return true;
}

void BrowserHost::take(std::string_view message) {
    std::string problem;
    auto report = parseTabReport(message, &problem);
    if (report) {
        waiting_ = std::move(report);
    } else if (!hasComplained_) {
        // Once is enough: the browser keeps these lines in its log.
        hasComplained_ = true;
        fmt::print(stderr, "quorvane-browser-host: a message was passed over: {}\n", problem);
    }
}

void BrowserHost::passOn() {
    tracker_.send(BrowserMessage{.browser = browser_, .page = *waiting_}.text());
    waiting_.reset();
    const itimerspec once{.it_interval = {}, .it_value = {.tv_sec = 0, .tv_nsec = interval}};
    isIntervalRunning_ = ::timerfd_settime(interval_, 0, &once, nullptr) == 0;
}

}  // namespace quorvane
