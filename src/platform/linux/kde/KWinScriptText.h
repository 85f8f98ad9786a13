#pragma once

#include <string>

namespace quorvane::platform {

/// The script of resources/kwin for this receiver, a unique name on the session bus, and under this name.
[[nodiscard]] std::string kwinScriptText(const std::string& receiver, const std::string& name);

}  // namespace quorvane::platform
