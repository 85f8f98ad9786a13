#include "platform/simulated/InMemoryUserDefaults.h"

namespace quorvane::platform {

std::optional<std::string> InMemoryUserDefaults::value(std::string_view key) const {
    const auto found = values_.find(key);
    return found == values_.end() ? std::nullopt : std::optional(found->second);
}

bool InMemoryUserDefaults::setValue(std::string_view key, std::string_view value) {
    if (areWritesRefused_) return false;
    values_.insert_or_assign(std::string(key), std::string(value));
    return true;
}

bool InMemoryUserDefaults::removeValue(std::string_view key) {
    if (areWritesRefused_) return false;
    values_.erase(std::string(key));
    return true;
}

}  // namespace quorvane::platform
