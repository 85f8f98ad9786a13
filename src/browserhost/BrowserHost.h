#pragma once

#include "browserhost/NativeMessages.h"
#include "browserhost/TabReport.h"
#include "browserhost/TrackerConnection.h"

#include <sys/types.h>

namespace quorvane {

/// Passes on what one browser says, until it says no more. The browser is never kept waiting, whatever the tracker
/// does. Of what comes faster than 50 times a second only the newest goes on. Between messages the process rests.
class BrowserHost {
public:
    /// Reads from `input`; `browser` is the process that is named to the tracker. Throws `std::system_error`.
    BrowserHost(int input, std::optional<std::filesystem::path> socket, pid_t browser);
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

    int input_;
    int interval_;  ///< a timer that runs while nothing may be passed on
    bool isIntervalRunning_ = false;
    pid_t browser_;
    NativeMessages messages_;
    std::optional<TabReport> waiting_;  ///< has not been passed on yet
    bool hasComplained_ = false;
    TrackerConnection tracker_;
};

}  // namespace quorvane
