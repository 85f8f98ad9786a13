#pragma once

#include "base/Weak.h"
#include "cloud/SyncParts.h"

#include <future>
#include <optional>

namespace quorvane {

/// The way down: takes the newest records of the cloud, `CloudKitDataStrategy::defaultResultLimit` at most, and merges
/// them into the store, page by page, so that no more than two pages are in memory. Behind these it goes on only until
/// the store has seen the cloud to its end once: how far it has come is noted in the store, so that a first download
/// that breaks off is taken up by the next sync. Main thread only; destroying it drops what is under way.
class RecordDownload {
public:
    static constexpr std::size_t pageSize = 1000;
    /// Rows that the main thread merges at a time, some 10 ms of work.
    static constexpr std::size_t sliceSize = 200;

    RecordDownload(SyncParts& parts, SyncFinished finished) : parts_(parts), finished_(std::move(finished)) {}

    void start();

private:
    void ask(const std::optional<platform::RecordCursor>& after);
    void notePage(std::future<platform::QueryPage> answer);
    void countRows(const platform::QueryPage& page);
    [[nodiscard]] std::optional<platform::RecordCursor> nextPage() const;
    void mergeSlice();
    void merge(const platform::CloudRecord& cloudRecord);
    void finishPage();
    template <class Work>
    void unlessFailed(const Work& work);

    SyncParts& parts_;
    SyncFinished finished_;
    platform::QueryPage page_;                      ///< that is being merged
    std::size_t merged_ = 0;                        ///< rows of it that are done
    std::size_t rows_ = 0;                          ///< that came so far, readable or not
    bool hasSeenAll_ = false;                       ///< the store has seen the cloud to its end
    std::optional<platform::RecordCursor> resume_;  ///< where an earlier download broke off, behind the newest
    std::optional<std::future<platform::QueryPage>> waiting_;  ///< came while the one before was merged
    WeakSource<RecordDownload> weak_{*this};
};

}  // namespace quorvane
