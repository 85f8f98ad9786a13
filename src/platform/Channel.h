#pragma once

#include "base/Date.h"

#include <cstdint>
#include <optional>
#include <string>

namespace quorvane::platform {

/// What can be seen of the user's work. Each kind builds on the one before.
enum class Sight : std::uint8_t { nothing, applications, titles, documents, pages };

/// Why a question about windows finds no answer. People are told in their own language.
enum class Obstacle : std::uint8_t {
    none,
    wayland,
    noDisplay,
    displayRefused,  ///< there is one that lets nobody in
    displayGone,     ///< it has let us in, and ended since
    noWindowManager,
    noBrowser,    ///< none with our extension has connected
    noExtension,  ///< the desktop tells of its windows only to an extension of its own, and ours does not run
    afterLogin,   ///< what it needs is installed, and begins with the next login
    other
};

/// What the application itself can do where a question finds no answer, with the user's word.
enum class Mend : std::uint8_t {
    nothing,
    desktopAid,     ///< install what this desktop needs before it tells
    accessibility,  ///< switch it on
    browser         ///< install the extension, which takes a command and the browser
};

/// Who answers a question to the desktop, or why nobody does.
struct Channel {
    std::string question;  ///< "front window", "system idle time"
    std::string name;      ///< the channel that answers or was tried: "X11 _NET_ACTIVE_WINDOW"
    bool isAvailable = false;
    std::string reason;                  ///< why it does not answer, or which part it can't; else empty
    std::string remedy;                  ///< what the user can do about it; may be empty
    Sight gives = Sight::nothing;        ///< what can't be seen without an answer
    Obstacle obstacle = Obstacle::none;  ///< why it does not answer, where that has a name
    Mend mend = Mend::nothing;
    std::optional<Date> lastSign{};  ///< when it last told something; none: never, or nobody keeps that
    friend bool operator==(const Channel&, const Channel&) = default;

    /// Does it answer for some and not for others?
    [[nodiscard]] bool isPartial() const { return isAvailable && !reason.empty(); }
};

}  // namespace quorvane::platform
