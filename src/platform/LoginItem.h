#pragma once

#include <optional>
#include <string>

namespace quorvane::platform {

/// Whether the session starts this application when the user logs in.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    /// Read anew at each call.
    [[nodiscard]] virtual bool isEnabled() const = 0;

    /// Makes or ends the entry; what stands already is no error. Gives why it failed, none if it did not.
    [[nodiscard]] virtual std::optional<std::string> registerItem() = 0;
    [[nodiscard]] virtual std::optional<std::string> unregisterItem() = 0;
};

}  // namespace quorvane::platform
