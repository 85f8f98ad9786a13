#pragma once

#include "base/Date.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/KeyEventSource.h"
#include "platform/RunLoop.h"
#include "platform/SettingsPanes.h"

#include <functional>
#include <memory>

namespace quorvane {

/// Tells how long ago a key of the keyboard moved, whichever application had it, and never which key. Needs the
/// desktop's permission; refused, it shows the user where to grant it and stays off. One for the process, main thread
/// only.
class KeyboardMonitor {
public:
    KeyboardMonitor(platform::RunLoop& runLoop, platform::KeyEventSource& keys, platform::SettingsPanes& settingsPanes,
                    ConsoleSink& console);
    KeyboardMonitor(const KeyboardMonitor&) = delete;
    KeyboardMonitor& operator=(const KeyboardMonitor&) = delete;
    virtual ~KeyboardMonitor();

    /// True from a start that succeeded to the next stop.
    [[nodiscard]] virtual bool isMonitoring() const { return isMonitoring_; }

    /// Called at most once per 2 s of activity; none by default.
    std::function<void()> onActivity;

    virtual void startMonitoring();
    virtual void stopMonitoring();

    [[nodiscard]] virtual Date getLastActivityTime() const { return lastActivityTime_; }

    /// Now minus the last activity. It goes on growing while the monitor is stopped; a start sets it to 0.
    [[nodiscard]] virtual Seconds getIdleTime() const;

private:
    void handleEvent();
    void requestPermission();

    platform::RunLoop& runLoop_;
    platform::KeyEventSource& keys_;
    platform::SettingsPanes& settingsPanes_;
    ConsoleSink& console_;
    std::unique_ptr<platform::KeyEventTap> eventTap_;
    Date lastActivityTime_;
    Date lastCallbackTime_;
    bool isMonitoring_ = false;
};

}  // namespace quorvane
