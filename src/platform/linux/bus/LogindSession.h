#pragma once

#include "platform/linux/bus/DBusConnection.h"

#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QStringList>
#include <QVariantMap>
#include <functional>
#include <string>

namespace quorvane::platform {

/// What logind says about the machine's sleep and our session: its lock, and whether it is the one on the screen.
class LogindSession final : public QObject {
    Q_OBJECT

public:
    struct Handlers {
        std::function<void()> willSleep;  ///< the machine sleeps only when this has returned
        std::function<void()> didWake;
        std::function<void(bool lock)> lockRequested;
        std::function<void(bool isLocked)> lockReported;
        std::function<void(bool isInFront)> frontReported;
    };

    /// What logind calls the session of this process, or else the user's on the screen: "x11", "wayland", "tty". Empty
    /// where it does not tell.
    [[nodiscard]] static std::string type();

    /// Asks logind and listens from now on; answered or not, this takes less than a second.
    explicit LogindSession(Handlers handlers);

    /// Why sleep, or the session's lock, is not reported; empty when it is.
    [[nodiscard]] std::string sleepProblem();
    [[nodiscard]] std::string lockProblem();

    /// How things were at the start.
    [[nodiscard]] bool wasLocked() const { return wasLocked_; }
    [[nodiscard]] bool wasInFront() const { return wasInFront_; }

private Q_SLOTS:
    void notePrepareForSleep(bool isGoing);
    void noteLock() { handlers_.lockRequested(true); }
    void noteUnlock() { handlers_.lockRequested(false); }
    void noteProperties(const QString& interface, const QVariantMap& changed, const QStringList& invalidated);

private:
    void takeDelay();

    Handlers handlers_;
    DBusConnection system_;
    QString sessionPath_;            ///< empty: this process belongs to no session
    QDBusUnixFileDescriptor delay_;  ///< while it is open the machine waits with falling asleep
    bool isAsleep_ = false;
    bool wasLocked_ = false;
    bool wasInFront_ = true;
};

}  // namespace quorvane::platform
