#pragma once

#include "base/Weak.h"
#include "cloud/SyncParts.h"

#include <future>

namespace quorvane {

/// The way down: takes the newest records of the cloud and merges them into the store, page by page, so that no more
/// than two pages are in memory. It ends after `CloudKitDataStrategy::defaultResultLimit` rows unless the cloud has
/// more records than the store knows of: a new machine, or one whose first sync broke off, takes all the rest, too.
/// Main thread only; destroying it drops what is under way.
class RecordDownload {
public:
    /// Rows that the main thread merges at a time, some 10 ms of work.
    static constexpr std::size_t pageSize = 250;

    RecordDownload(SyncParts& parts, SyncFinished finished) : parts_(parts), finished_(std::move(finished)) {}

    void start() { ask({}); }

private:
    void ask(const std::optional<platform::RecordCursor>& after);
    void notePage(std::future<platform::QueryPage> answer);
    void merge(const platform::QueryPage& page);
    void askHowManyThereAre();
    void noteCount(std::future<std::size_t> answer);
    void finish();
    template <class Work>
    void unlessFailed(const Work& work);

    SyncParts& parts_;
    SyncFinished finished_;
    std::size_t rows_ = 0;  ///< that came so far, readable or not
    bool takesAll_ = false;
    std::optional<platform::RecordCursor> next_;  ///< where the page that was merged last ended
    WeakSource<RecordDownload> weak_{*this};
};

}  // namespace quorvane
