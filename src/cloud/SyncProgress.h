#pragma once

#include <cstddef>

namespace quorvane {

/// How far a sync has come.
struct SyncProgress {
    std::size_t toUpload = 0;    ///< records that were never uploaded when it began
    std::size_t uploaded = 0;    ///< of them, those that were sent, whatever became of them
    std::size_t refused = 0;     ///< of these, those that the cloud did not take
    std::size_t downloaded = 0;  ///< records that came from the cloud
    std::size_t unreadable = 0;  ///< rows that came besides and are no records
    friend bool operator==(const SyncProgress&, const SyncProgress&) = default;
};

}  // namespace quorvane
