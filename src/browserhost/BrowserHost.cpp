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
constexpr int patience = 50;           // attempts: a socket is there a little earlier than somebody who listens

std::system_error lastError(const char* what) {
    return {errno, std::generic_category(), what};
}

}  // namespace

BrowserHost::BrowserHost(int input, const std::optional<std::filesystem::path>& socket, pid_t browser)
    : input_(input), interval_(::timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)), browser_(browser),
      tracker_(socket), arrival_(socket) {
    if (interval_ < 0) throw lastError("no timer");
}

BrowserHost::~BrowserHost() {
    ::close(interval_);
}

void BrowserHost::run() {
    for (;;) {
        std::array<pollfd, 3> ready{{{input_, POLLIN, 0},
                                     {isIntervalRunning_ ? interval_ : -1, POLLIN, 0},
                                     {arrival_.descriptor(), POLLIN, 0}}};
        if (::poll(ready.data(), ready.size(), -1) < 0) {
            if (errno == EINTR) continue;
            throw lastError("cannot wait for input");
        }
        if (ready[0].revents != 0 && !readInput()) return;
        if (ready[1].revents != 0) isIntervalRunning_ = false;
        if (ready[2].revents != 0 && arrival_.notice()) greet();
        if (isWaiting_ && !isIntervalRunning_) passOn();
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
        newest_ = std::move(report);
        isWaiting_ = true;
    } else if (!hasComplained_) {
        // Once is enough: the browser keeps these lines in its log.
        hasComplained_ = true;
        fmt::print(stderr, "quorvane-browser-host: a message was passed over: {}\n", problem);
    }
}

void BrowserHost::passOn() {
    const bool hasGone = tracker_.send(BrowserMessage{.browser = browser_, .page = *newest_}.text());
    isWaiting_ = !hasGone && attempts_ > 0;
    attempts_ = isWaiting_ ? attempts_ - 1 : 0;
    const itimerspec once{.it_interval = {}, .it_value = {.tv_sec = 0, .tv_nsec = interval}};
    isIntervalRunning_ = ::timerfd_settime(interval_, 0, &once, nullptr) == 0;
}

void BrowserHost::greet() {
    tracker_.disconnect();  // from the one that was there before
    if (!newest_) return;
    isWaiting_ = true;
    attempts_ = patience;
}

}  // namespace quorvane
