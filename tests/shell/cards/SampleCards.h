#pragma once

#include "praise/ShareImageConfig.h"

#include <string>
#include <vector>

namespace quorvane {

/// A day and a sentence about it, to draw cards of.
struct SampleCard {
    std::string name;
    ShareImageChoice choice;
};

/// A usual day, a full one with more applications than there are colours, an empty one, and days in German, Arabic and
/// Japanese whose sentences are longer than any that the application knows.
[[nodiscard]] std::vector<SampleCard> sampleCards();
[[nodiscard]] SampleCard sampleCard(const std::string& name);

/// The sample in a style and a scheme.
[[nodiscard]] ShareImageConfig configOf(const SampleCard& sample, CardStyle style,
                                        ColorScheme scheme = ColorScheme::ocean);

/// To which the codes of sample cards lead.
inline constexpr const char* sampleAddress = "https://www.quorvane.example";

}  // namespace quorvane
