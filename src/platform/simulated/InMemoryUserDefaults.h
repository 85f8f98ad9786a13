#pragma once

#include "platform/UserDefaults.h"

#include <functional>
#include <map>
#include <string>

namespace quorvane::platform {

/// User defaults that last as long as the object.
class InMemoryUserDefaults : public UserDefaults {
public:
    [[nodiscard]] std::optional<std::string> value(std::string_view key) const override;
    bool setValue(std::string_view key, std::string_view value) override;
    bool removeValue(std::string_view key) override;

    /// From now on nothing can be kept, as on a full disk.
    void refuseWrites(bool refused = true) { areWritesRefused_ = refused; }

    [[nodiscard]] const std::map<std::string, std::string, std::less<>>& values() const { return values_; }

private:
    std::map<std::string, std::string, std::less<>> values_;
    bool areWritesRefused_ = false;
};

}  // namespace quorvane::platform
