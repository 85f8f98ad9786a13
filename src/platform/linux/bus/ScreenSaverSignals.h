#pragma once

#include "platform/linux/bus/DBusConnection.h"

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QSet>
#include <functional>
#include <map>
#include <string>

namespace quorvane::platform {

/// The screen savers' own word on the lock: `ActiveChanged` on the session bus. Some lockers report nowhere else.
class ScreenSaverSignals final : public QObject {
    Q_OBJECT

public:
    /// `changed` hears what a screen saver says, and that none is active any more when the last one that said so has
    /// left the bus.
    explicit ScreenSaverSignals(std::function<void(bool isActive)> changed);

    /// Asks each one whether it is active; whoever does not answer within a second is not. `answered` is called later
    /// (at once where there is no bus), and not at all while an earlier question is open.
    void ask(const std::function<void(bool isAnyActive)>& answered);

    /// Why nobody reports; empty when a screen saver is there.
    [[nodiscard]] std::string problem();

private Q_SLOTS:
    void noteActive(const QDBusMessage& signal);
    void noteGone(const QString& name);

private:
    std::function<void(bool)> changed_;
    DBusConnection session_;
    QDBusServiceWatcher watcher_;
    QSet<QString> active_;              ///< who said that it is; each interface is the service's name too
    std::map<QString, QString> paths_;  ///< of the object, by interface
    int openAnswers_ = 0;
    bool isAnyActive_ = false;  ///< among the answers so far
};

}  // namespace quorvane::platform
