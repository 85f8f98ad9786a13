#pragma once

#include "praise/ShareImageConfig.h"

#include <string>

/// The program that paints share cards for this one, which starts without fonts and libraries for pictures.
namespace quorvane::cli::CardPainter {

/// The card as the bytes of a PNG file. Throws `CommandError` where the program isn't installed or fails.
[[nodiscard]] std::string pngOf(const ShareImageConfig& config);

}  // namespace quorvane::cli::CardPainter
