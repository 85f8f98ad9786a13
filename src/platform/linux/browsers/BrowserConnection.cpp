#include "platform/linux/browsers/BrowserConnection.h"

#include <array>
#include <cerrno>
#include <fmt/format.h>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>

namespace quorvane::platform {
namespace {

using namespace std::chrono_literals;

constexpr int mostTurns = 100;    // a second; a host of ours sends fifty messages at most
constexpr int mostPackets = 256;  // in one turn; more than a socket's buffer holds of the usual size

}  // namespace

BrowserConnection::BrowserConnection(int descriptor, Listener listener)
    : descriptor_(descriptor), listener_(std::move(listener)),
      notifier_(std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read)) {
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { read(); });
    pause_.setSingleShot(true);
    QObject::connect(&pause_, &QTimer::timeout, &pause_, [this] { notifier_->setEnabled(true); });
}

BrowserConnection::~BrowserConnection() {
    notifier_->setEnabled(false);
    notifier_.release()->deleteLater();  // it may be the one that calls
    ::close(descriptor_);
}

void BrowserConnection::read() {
    std::array<char, BrowserMessage::longest> packet;
    std::optional<std::string> newest;
    bool hasEnded = false;
    for (int count = 0; count < mostPackets && !hasEnded; ++count) {
        const ssize_t got = ::recv(descriptor_, packet.data(), packet.size(), MSG_TRUNC);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0 && errno == EAGAIN) break;
        hasEnded = got <= 0;
        if (got > static_cast<ssize_t>(packet.size()))
            complain("a message was too long");
        else if (got > 0)
            newest = std::string(packet.data(), static_cast<std::size_t>(got));
    }
    rest();
    auto message = newest ? parseBrowserMessage(*newest) : std::nullopt;
    if (newest && (!message || message->browser != browser_.value_or(message->browser))) {
        complain("a message could not be understood");
        message.reset();
    }
    if (hasEnded) {
        const auto ended = std::move(listener_.ended);  // outlives this object
        return ended(*this);
    }
    if (!message) return;
    browser_ = message->browser;
    listener_.heard(*this, std::move(*message));
}

/// After too many turns the next one has to wait for the end of the second.
void BrowserConnection::rest() {
    const auto now = std::chrono::steady_clock::now();
    if (now - secondBegan_ >= 1s) {
        secondBegan_ = now;
        turns_ = 0;
    }
    if (++turns_ < mostTurns) return;
    notifier_->setEnabled(false);
    pause_.start(1s);
    complain("there are too many messages, only the newest count");
}

void BrowserConnection::complain(const std::string& line) {
    if (hasComplained_) return;
    hasComplained_ = true;
    listener_.complained(browser_ ? fmt::format("browser {}: {}", *browser_, line)
                                  : fmt::format("a browser: {}", line));
}

}  // namespace quorvane::platform
