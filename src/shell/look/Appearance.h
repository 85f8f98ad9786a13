#pragma once

#include "base/Signal.h"

#include <memory>

namespace quorvane {

/// What the desktop prefers.
struct AppearancePreference {
    bool isDark = false;
    bool isHighContrast = false;
    bool hasAnimations = true;
    friend bool operator==(const AppearancePreference&, const AppearancePreference&) = default;
};

/// Follows the desktop's appearance while the program runs: the settings portal (color-scheme, contrast,
/// enable-animations); where there is none, the lightness of the desktop's own palette when it was made. The
/// environment variable QUORVANE_APPEARANCE ("light" or "dark") overrules both, for pictures and tests. Never blocks
/// longer than 300 ms, and that at the start alone. Main thread only.
class Appearance {
public:
    Appearance();
    Appearance(const Appearance&) = delete;
    Appearance& operator=(const Appearance&) = delete;
    ~Appearance();

    [[nodiscard]] const AppearancePreference& preference() const;
    /// Sent after the preference has changed.
    Signal<> changed;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

/// Gives the program theme and motion as preferred.
void applyAppearance(const AppearancePreference& preference);

}  // namespace quorvane
