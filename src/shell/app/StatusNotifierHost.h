#pragma once

#include "platform/linux/bus/DBusConnection.h"

#include <QObject>
#include <functional>

/// The part of the desktop that takes tray icons over D-Bus.
namespace quorvane::StatusNotifierHost {

/// Calls `ready` once: at once where the host is there or there is no session bus, else when it comes, at the latest
/// after 15 s. At login applications start before the panel does. Not at all once `context` is gone.
void whenThereOrLate(platform::DBusConnection& sessionBus, QObject& context, const std::function<void()>& ready);

}  // namespace quorvane::StatusNotifierHost
