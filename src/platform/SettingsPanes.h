#pragma once

#include <string>

namespace quorvane::platform {

/// Brings the user to the place where a permission can be granted.
class SettingsPanes {
public:
    virtual ~SettingsPanes() = default;

    /// Is there anything to open for this pane ("x-apple.systempreferences:...")? What isn't there isn't offered.
    [[nodiscard]] virtual bool canOpen(const std::string& url) const = 0;

    /// Opens the pane that the URL stands for, or what this desktop has in its place. Where there is nothing to open,
    /// nothing happens.
    virtual void open(const std::string& url) = 0;
};

}  // namespace quorvane::platform
