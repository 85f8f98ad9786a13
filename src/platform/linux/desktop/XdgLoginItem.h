#pragma once

#include "platform/LoginItem.h"

#include <filesystem>

namespace quorvane::platform {

/// A desktop file in the user's autostart folder that starts the program with --background. It counts where it is
/// there and neither it nor the desktop's own settings have switched it off.
class XdgLoginItem final : public LoginItem {
public:
    /// `program` is the absolute path of what to start.
    explicit XdgLoginItem(std::filesystem::path program);

    [[nodiscard]] bool isEnabled() const override;
    [[nodiscard]] std::optional<std::string> registerItem() override;
    [[nodiscard]] std::optional<std::string> unregisterItem() override;

    /// "autostart/org.zelkor.Quorvane.desktop" in the user's configuration.
    [[nodiscard]] const std::filesystem::path& file() const { return file_; }

private:
    std::filesystem::path program_;
    std::filesystem::path file_;
};

}  // namespace quorvane::platform
