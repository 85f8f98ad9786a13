#pragma once

#include "base/Date.h"

#include <QByteArray>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <sys/types.h>

class QJsonObject;
class QSocketNotifier;

namespace quorvane::platform {

/// A conversation with sway at its IPC socket. What it tells is an extra, so whatever sway wouldn't say ends it without
/// a word. Main thread only.
class SwayIpc {
public:
    enum class Message : std::uint32_t { subscribe = 2, tree = 4, windowEvent = 0x80000003 };
    using Heard = std::function<void(Message kind, const QJsonObject& content)>;

    /// Only with the process `compositor`: a compositor that was started in sway inherits the path to it. Nobody may
    /// destroy it while it calls them.
    SwayIpc(const std::string& path, pid_t compositor, Heard heard, std::function<void()> ended);
    SwayIpc(const SwayIpc&) = delete;
    SwayIpc& operator=(const SwayIpc&) = delete;
    ~SwayIpc();

    [[nodiscard]] bool isConnected() const { return notifier_ != nullptr; }

    void ask(Message kind, const QByteArray& content = {});

    /// Waits until sway has answered what was asked so far, 0.1 s at most.
    void settle();

private:
    void read();
    [[nodiscard]] bool takeMessage();
    void end();

    Heard heard_;
    std::function<void()> ended_;
    int descriptor_;
    std::unique_ptr<QSocketNotifier> notifier_;
    QByteArray received_;  ///< the beginning of a message
    int unanswered_ = 0;
};

}  // namespace quorvane::platform
