#pragma once

#include "desktop/support/BusMock.h"

#include <string>

namespace quorvane {

/// A logind with one session, "c1", on the test's system bus; the test decides what it announces. XDG_SESSION_ID names
/// that session.
class LogindMock {
public:
    LogindMock();
    ~LogindMock();

    void prepareForSleep(bool isGoing);

    /// Asks the session's locker, as `loginctl lock-session` does.
    void requestLock(bool lock);
    void setLockedHint(bool isLocked);
    /// Is it the session on the screen?
    void setActive(bool isActive);

    /// How many keep the machine from sleeping at once.
    [[nodiscard]] int inhibitors();

    /// From now on this is all that it lists: ("idle", "Player", "Film", "block", user, process), in Python.
    void listInhibitors(const std::string& inhibitors);

    /// It no longer answers, but stays on the bus.
    void hang() { mock_.hang(); }

private:
    BusMock mock_;
};

/// Says on the session bus what a screen saver with this interface says.
void announceScreenSaver(const std::string& interface, bool isActive);

}  // namespace quorvane
