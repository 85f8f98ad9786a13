#pragma once

#include <cstdlib>
#include <string>

namespace quorvane {

/// The value of a variable of the environment; empty where it isn't set.
[[nodiscard]] inline std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

}  // namespace quorvane
