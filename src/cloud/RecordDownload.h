#pragma once

#include "base/Weak.h"
#include "cloud/SyncParts.h"

#include <future>
#include <optional>

namespace quorvane {

/// The way down: takes the newest records of the cloud and merges them into the store, page by page, so that no more
/// than two pages are in memory. It ends after `CloudKitDataStrategy::defaultResultLimit` rows unless the cloud has
/// more records than the store knows of: a new machine, or one whose first sync broke off, takes all the rest, too.
/// Main thread only; destroying it drops what is under way.
class RecordDownload {
public:
    static constexpr std::size_t pageSize = 1000;
    /// Rows that the main thread merges at a time, some 10 ms of work.
    static constexpr std::size_t sliceSize = 200;

    RecordDownload(SyncParts& parts, SyncFinished finished) : parts_(parts), finished_(std::move(finished)) {}

    void start() { ask({}); }

private:
    void ask(const std::optional<platform::RecordCursor>& after);
    void notePage(std::future<platform::QueryPage> answer);
    void mergeSlice();
    void merge(const platform::CloudRecord& cloudRecord);
    [[nodiscard]] bool goesOn() const;  ///< Is the page behind this one wanted already?
    void finishPage();
    void askHowManyThereAre();
    void noteCount(std::future<std::size_t> answer);
    void finish();
    template <class Work>
    void unlessFailed(const Work& work);

    SyncParts& parts_;
    SyncFinished finished_;
    platform::QueryPage page_;  ///< that is being merged
    std::size_t merged_ = 0;    ///< rows of it that are done
    std::size_t rows_ = 0;      ///< that came so far, readable or not
    bool takesAll_ = false;
    std::optional<std::future<platform::QueryPage>> waiting_;  ///< came while the one before was merged
    WeakSource<RecordDownload> weak_{*this};
};

}  // namespace quorvane
