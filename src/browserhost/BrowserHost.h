#pragma once

#include "browserhost/NativeMessages.h"
#include "browserhost/TabReport.h"
#include "browserhost/TrackerArrival.h"
#include "browserhost/TrackerConnection.h"

#include <sys/types.h>

namespace quorvane {

/// Passes on what one browser says, until it says no more. The browser is never kept waiting, whatever the tracker
/// does. Of what comes faster than 50 times a second only the newest goes on. A tracker that begins to listen is told
/// the newest at once. Between messages the process rests.
class BrowserHost {
public:
    /// Reads from `input`; `browser` is the process that is named to the tracker. Throws `std::system_error`.
    BrowserHost(int input, const std::optional<std::filesystem::path>& socket, pid_t browser);
    BrowserHost(const BrowserHost&) = delete;
    BrowserHost& operator=(const BrowserHost&) = delete;
    ~BrowserHost();

    /// Serves until the input ends. Throws `std::runtime_error` if it can't be read or a message is too long.
    void run();

private:
    /// False at the end of the input.
    bool readInput();
    void take(std::string_view message);
    void passOn();
    void greet();

    int input_;
    int interval_;  ///< a timer that runs while nothing may be passed on
    bool isIntervalRunning_ = false;
    pid_t browser_;
    NativeMessages messages_;
    std::optional<TabReport> newest_;
    bool isWaiting_ = false;  ///< the newest is to be passed on
    int attempts_ = 0;        ///< to pass it on, that are left if nobody listens
    bool hasComplained_ = false;
    TrackerConnection tracker_;
    TrackerArrival arrival_;
};

}  // namespace quorvane
