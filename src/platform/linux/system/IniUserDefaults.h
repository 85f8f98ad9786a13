#pragma once

#include "platform/UserDefaults.h"

#include <filesystem>
#include <memory>

namespace quorvane::platform {

/// User defaults in an INI file that only the user can read. Other processes may write the same file.
class IniUserDefaults final : public UserDefaults {
public:
    /// In the user's configuration: "quorvane/quorvane.conf".
    IniUserDefaults();
    explicit IniUserDefaults(std::filesystem::path file);
    IniUserDefaults(const IniUserDefaults&) = delete;
    IniUserDefaults& operator=(const IniUserDefaults&) = delete;
    ~IniUserDefaults() override;

    [[nodiscard]] std::optional<std::string> value(std::string_view key) const override;
    bool setValue(std::string_view key, std::string_view value) override;
    bool removeValue(std::string_view key) override;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace quorvane::platform
