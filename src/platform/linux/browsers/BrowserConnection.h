#pragma once

#include "browserhost/TabReport.h"

#include <QSocketNotifier>
#include <QTimer>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace quorvane::platform {

/// One host that is connected. It may say so much and no more: what comes faster is read late, and of that only the
/// newest message counts. What it sends beyond the socket's buffer stays with it.
class BrowserConnection {
public:
    struct Listener {
        std::function<void(BrowserConnection&, BrowserMessage)> heard;
        std::function<void(const std::string&)> complained;  ///< a line for people; at most once a connection
        std::function<void(BrowserConnection&)> ended;       ///< may destroy the connection
    };

    /// Takes the descriptor over.
    BrowserConnection(int descriptor, Listener listener);
    BrowserConnection(const BrowserConnection&) = delete;
    BrowserConnection& operator=(const BrowserConnection&) = delete;
    ~BrowserConnection();

private:
    void read();
    void rest();
    void complain(const std::string& line);

    int descriptor_;
    Listener listener_;
    std::optional<std::int64_t> browser_;  ///< its process, once the host has named it; it can't name another one later
    int turns_ = 0;                        ///< that brought messages since `secondBegan_`
    std::chrono::steady_clock::time_point secondBegan_{};
    bool hasComplained_ = false;
    std::unique_ptr<QSocketNotifier> notifier_;
    QTimer pause_;  ///< runs while nothing is read
};

}  // namespace quorvane::platform
