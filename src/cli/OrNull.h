#pragma once

#include "base/Json.h"

#include <string>

namespace quorvane::cli {

/// The text in JSON; null for an empty one, which says that there is none.
[[nodiscard]] inline Json orNull(const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

}  // namespace quorvane::cli
