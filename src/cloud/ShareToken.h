#pragma once

#include "base/Uuid.h"

#include <string>

/// By its token a share is found: it is the name of the public record, and part of every link to it.
namespace quorvane::ShareToken {

/// 16 lower-case hexadecimal characters: the first of the identifier's, of which 60 bits are random.
[[nodiscard]] std::string from(const Uuid& uuid);

/// A fresh one from the system's random source.
[[nodiscard]] std::string random();

}  // namespace quorvane::ShareToken
