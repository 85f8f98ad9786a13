#include "platform/linux/wayland/SwayIpc.h"

#include "platform/linux/process/LocalSocket.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace quorvane::platform {
namespace {

constexpr Seconds patienceWithSway = 0.1s;
constexpr std::uint32_t longestMessage = 16 << 20;
constexpr std::uint32_t eventBit = 0x80000000;

/// Before each message stand this word, its length and its kind.
constexpr QByteArrayView magic = "i3-ipc";
constexpr qsizetype headerSize = magic.size() + 2 * sizeof(std::uint32_t);

}  // namespace

SwayIpc::SwayIpc(const std::string& path, pid_t compositor, Heard heard, std::function<void()> ended)
    : heard_(std::move(heard)), ended_(std::move(ended)), descriptor_(LocalSocket::connectTo(path)) {
    if (descriptor_ < 0 || compositor <= 0 || LocalSocket::peerOf(descriptor_) != compositor) return;
    notifier_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { read(); });
}

SwayIpc::~SwayIpc() {
    notifier_.reset();
    if (descriptor_ >= 0) ::close(descriptor_);
}

void SwayIpc::ask(Message kind, const QByteArray& content) {
    if (!isConnected()) return;
    const std::array<std::uint32_t, 2> numbers{static_cast<std::uint32_t>(content.size()),
                                               static_cast<std::uint32_t>(kind)};
    QByteArray message = magic.toByteArray();
    message.append(reinterpret_cast<const char*>(numbers.data()), sizeof numbers).append(content);
    const auto size = static_cast<std::size_t>(message.size());
    // A question is short enough for the buffer of any socket that is read at all.
    if (::send(descriptor_, message.constData(), size, MSG_NOSIGNAL) != message.size()) return end();
    ++unanswered_;
}

void SwayIpc::settle() {
    const auto end = std::chrono::steady_clock::now() + patienceWithSway;
    while (isConnected() && unanswered_ > 0) {
        const Seconds left = end - std::chrono::steady_clock::now();
        pollfd descriptor{.fd = descriptor_, .events = POLLIN, .revents = 0};
        if (left <= 0s || ::poll(&descriptor, 1, static_cast<int>(left / 1ms) + 1) <= 0) return;
        read();
    }
}

void SwayIpc::read() {
    std::array<char, 65536> part;
    const auto size = ::recv(descriptor_, part.data(), part.size(), 0);
    if (size < 0 && (errno == EAGAIN || errno == EINTR)) return;
    if (size <= 0) return end();
    received_.append(part.data(), size);
    while (isConnected() && takeMessage()) {
    }
}

/// False where it isn't whole yet.
bool SwayIpc::takeMessage() {
    if (received_.size() < headerSize) return false;
    std::array<std::uint32_t, 2> numbers;
    std::memcpy(numbers.data(), received_.constData() + magic.size(), sizeof numbers);
    const auto [length, kind] = numbers;
    const bool isKnown = received_.startsWith(magic) && length <= longestMessage;
    if (isKnown && received_.size() < headerSize + length) return false;
    const auto content = isKnown ? QJsonDocument::fromJson(received_.mid(headerSize, length)) : QJsonDocument();
    if (!content.isObject()) {
        end();
        return false;
    }
    received_.remove(0, headerSize + length);
    if ((kind & eventBit) == 0) --unanswered_;
    heard_(Message{kind}, content.object());
    return true;
}

void SwayIpc::end() {
    notifier_.reset();
    received_.clear();
    ended_();
}

}  // namespace quorvane::platform
