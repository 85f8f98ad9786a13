#pragma once

#include <optional>
#include <string>

namespace quorvane {

/// What the running application knows of its own version.
struct ApplicationInfo {
    std::optional<std::string> shortVersion;  ///< "1.2.0"
    std::optional<std::string> build;         ///< "345"
    friend bool operator==(const ApplicationInfo&, const ApplicationInfo&) = default;
};

}  // namespace quorvane
