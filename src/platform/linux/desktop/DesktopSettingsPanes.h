#pragma once

#include "platform/SettingsPanes.h"

namespace quorvane::platform {

/// The settings program of the desktop that XDG_CURRENT_DESKTOP names: its accessibility page for the accessibility
/// pane, its first page for automation, and for the login items the program that lists what starts with the session, or
/// else the first page. Input monitoring is nothing that a desktop here grants or refuses, so for it
/// nothing opens; nor without a desktop that we know or without a display.
class DesktopSettingsPanes final : public SettingsPanes {
public:
    [[nodiscard]] bool canOpen(const std::string& url) const override;
    void open(const std::string& url) override;
};

}  // namespace quorvane::platform
