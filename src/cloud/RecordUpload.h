#pragma once

#include "base/Weak.h"
#include "cloud/SyncParts.h"
#include "store/ActivityRecord.h"

#include <cstdint>
#include <deque>
#include <future>
#include <vector>

namespace quorvane {

/// The way up: sends the records that were never uploaded, newest first, and notes which of them are saved there. While
/// the server works on a batch the next one is made ready. Main thread only; destroying it drops what is under way.
class RecordUpload {
public:
    /// A statement of so many records is small beside every server's limits, and few are done again where one is bad.
    static constexpr std::size_t batchSize = 100;

    RecordUpload(SyncParts& parts, SyncFinished finished) : parts_(parts), finished_(std::move(finished)) {}

    void start();

private:
    using Batch = std::vector<std::shared_ptr<ActivityRecord>>;

    void findCandidates();
    [[nodiscard]] Batch nextBatch();
    void sendReady();
    void noteAnswer(const Batch& batch, std::future<std::vector<platform::SaveResult>> answer);
    void noteResults(const Batch& batch, const std::vector<platform::SaveResult>& results);

    SyncParts& parts_;
    SyncFinished finished_;
    std::deque<std::int64_t> candidates_;  ///< rows of the store that still have to be sent
    Batch ready_;                          ///< the next to go
    WeakSource<RecordUpload> weak_{*this};
};

}  // namespace quorvane
