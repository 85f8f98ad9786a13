#pragma once

#include "platform/KeyEventSource.h"
#include "platform/SettingsPanes.h"
#include "tracking/InputMonitor.h"

#include <memory>

namespace quorvane {

/// Tells how long ago a key of the keyboard moved, whichever application had it, and never which key. Needs the
/// desktop's permission; refused, it shows the user where to grant it and stays off. One for the process, main thread
/// only.
class KeyboardMonitor : public InputMonitor {
public:
    KeyboardMonitor(platform::RunLoop& runLoop, platform::KeyEventSource& keys, platform::SettingsPanes& settingsPanes,
                    ConsoleSink& console);
    ~KeyboardMonitor() override;

    void startMonitoring() override;
    void stopMonitoring() override;

private:
    void requestPermission();

    platform::KeyEventSource& keys_;
    platform::SettingsPanes& settingsPanes_;
    std::unique_ptr<platform::KeyEventTap> eventTap_;
};

}  // namespace quorvane
