#pragma once

#include "tracking/ActivityTrackingPolicy.h"

#include <optional>
#include <string>

namespace quorvane {

/// What somebody looks at within one application.
struct Attention {
    std::string title;                ///< of the window in front; empty for none
    std::optional<std::string> page;  ///< its URL, where it is known

    /// Is it the same thing to look at? Titles are compared by `steadyTitle`, pages without query and fragment. What is
    /// not known on either side tells nothing apart.
    [[nodiscard]] bool isSame(const Attention& other) const;
};

/// Notices when something else in the same application has held the attention for long enough to be worth a record of
/// its own. What comes and goes faster belongs to the record that is open.
class AttentionWatch {
public:
    /// A record of this begins.
    void begin(Attention attention);

    /// Takes what is looked at now. Answers with the first look at it once it is something new and has stood for
    /// `standing`.
    [[nodiscard]] std::optional<ClockLook> see(const Attention& attention, const ClockLook& look, Seconds standing);

    /// What the open record is about.
    [[nodiscard]] const Attention& shown() const { return shown_; }

private:
    struct Candidate {
        Attention attention;
        ClockLook since;
    };
    Attention shown_;
    std::optional<Candidate> candidate_;
};

}  // namespace quorvane
