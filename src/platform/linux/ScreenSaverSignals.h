#pragma once

#include "platform/linux/DBusConnection.h"

#include <QObject>
#include <functional>
#include <string>

namespace quorvane::platform {

/// The screen savers' own word on the lock: `ActiveChanged` on the session bus. Some lockers report nowhere else.
class ScreenSaverSignals final : public QObject {
    Q_OBJECT

public:
    explicit ScreenSaverSignals(std::function<void(bool isActive)> changed);

    /// Why nobody reports; empty when a screen saver is there.
    [[nodiscard]] std::string problem();

private Q_SLOTS:
    void noteActive(bool isActive) { changed_(isActive); }

private:
    std::function<void(bool)> changed_;
    DBusConnection session_;
};

}  // namespace quorvane::platform
