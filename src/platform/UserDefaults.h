#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvane::platform {

/// Small values that belong to the user and not to the store. A value is a text; who writes lists or maps writes JSON.
/// Keys may hold any character. Main thread only.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    [[nodiscard]] virtual std::optional<std::string> value(std::string_view key) const = 0;

    /// Kept at once and across restarts; false if it could not be.
    virtual bool setValue(std::string_view key, std::string_view value) = 0;
    virtual bool removeValue(std::string_view key) = 0;
};

}  // namespace quorvane::platform
