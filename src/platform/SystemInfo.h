#pragma once

#include <string>

namespace quorvane::platform {

/// The machine's operating system, as reports name it.
struct SystemInfo {
    std::string name;          ///< "Linux"
    std::string version;       ///< major and minor: "6.1"
    std::string architecture;  ///< "x86_64"
    friend bool operator==(const SystemInfo&, const SystemInfo&) = default;
};

}  // namespace quorvane::platform
