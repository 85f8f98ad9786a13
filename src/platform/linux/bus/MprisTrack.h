#pragma once

#include "platform/linux/bus/SessionBusQuestions.h"

#include <functional>
#include <optional>
#include <string>
#include <sys/types.h>

namespace quorvane::platform {

/// What a media player plays or has paused.
struct MprisTrack {
    std::string title;  ///< may be empty
    std::string file;   ///< its path, if it is a local file; may be empty
    friend bool operator==(const MprisTrack&, const MprisTrack&) = default;
};

/// Of the player that runs in this process, else of the one whose desktop-file id `isApplication`. One that plays goes
/// before one that pauses. None without such a player, or when it has stopped or does not answer.
[[nodiscard]] std::optional<MprisTrack> mprisTrack(SessionBusQuestions& bus, pid_t pid,
                                                   const std::function<bool(const std::string&)>& isApplication);

/// Does one of these players play?
[[nodiscard]] bool mprisPlays(SessionBusQuestions& bus, pid_t pid,
                              const std::function<bool(const std::string&)>& isApplication);

/// The track of this process alone.
[[nodiscard]] std::optional<MprisTrack> mprisTrack(SessionBusQuestions& bus, pid_t pid);

}  // namespace quorvane::platform
