#pragma once

#include "cloud/RecordDownload.h"
#include "cloud/RecordUpload.h"

namespace quorvane {

/// One sync: up, then down, over one connection that goes with it. Main thread only. Destroying it calls off what is
/// under way; what was saved so far stays so, and the next sync takes up the rest.
class RecordSync {
public:
    RecordSync(SyncParts parts, SyncFinished finished);
    RecordSync(const RecordSync&) = delete;
    RecordSync& operator=(const RecordSync&) = delete;
    ~RecordSync();

    void start();
    [[nodiscard]] const SyncProgress& progress() const { return parts_.progress; }

private:
    void afterUpload(const std::optional<CloudKitSyncError>& error);
    void afterDownload(const std::optional<CloudKitSyncError>& error);

    SyncParts parts_;
    SyncFinished finished_;
    RecordUpload upload_;
    RecordDownload download_;
};

}  // namespace quorvane
