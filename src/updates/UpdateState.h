#pragma once

#include "updates/ReleaseVersion.h"

#include <optional>
#include <string>

namespace quorvane {

/// A version that people may get.
struct AvailableUpdate {
    ReleaseVersion version{};
    std::string link{};   ///< https; for the browser
    std::string notes{};  ///< plain text, a line for each paragraph; may be empty
    friend bool operator==(const AvailableUpdate&, const AvailableUpdate&) = default;
};

/// What went wrong with a check, as far as people can do something about it. The log has the cause.
enum class UpdateFailure {
    unreachable,  ///< no connection, or a server that does not work
    insecure,     ///< the server could not prove who it is
    untrusted,    ///< what it sent is not signed by our makers, or leads away from them
    unreadable,   ///< what it sent is no feed
};

/// Where the search for updates stands.
struct UpdateState {
    enum class Kind { idle, checking, upToDate, available, failed, noFeed };
    Kind kind = Kind::idle;
    bool wasAsked = false;                    ///< the user asked and gets an answer, whatever it is
    std::optional<AvailableUpdate> update{};  ///< of `available`
    std::optional<UpdateFailure> failure{};   ///< of `failed`
    friend bool operator==(const UpdateState&, const UpdateState&) = default;
};

}  // namespace quorvane
