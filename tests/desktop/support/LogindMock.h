#pragma once

#include "desktop/support/ChildProcess.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <csignal>
#include <string>

namespace quorvane {

/// A logind with one session, "c1", on the test's system bus; the test decides what it announces. XDG_SESSION_ID names
/// that session.
class LogindMock {
public:
    LogindMock();
    LogindMock(const LogindMock&) = delete;
    LogindMock& operator=(const LogindMock&) = delete;
    ~LogindMock();

    void prepareForSleep(bool isGoing);

    /// Asks the session's locker, as `loginctl lock-session` does.
    void requestLock(bool lock);
    void setLockedHint(bool isLocked);

    /// How many keep the machine from sleeping at once.
    [[nodiscard]] int inhibitors();

    /// It no longer answers, but stays on the bus.
    void hang() { process_.send(SIGSTOP); }

private:
    QDBusMessage call(const std::string& path, const std::string& interface, const std::string& method,
                      const QVariantList& arguments = {});
    void emitSignal(const std::string& path, const std::string& interface, const std::string& signal,
                    const std::string& signature, const QVariantList& arguments);

    ChildProcess process_;
    QDBusConnection bus_;
};

/// Says on the session bus what a screen saver with this interface says.
void announceScreenSaver(const std::string& interface, bool isActive);

}  // namespace quorvane
