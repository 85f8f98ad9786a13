#include "cloud/RecordSync.h"

namespace quorvane {

RecordSync::RecordSync(SyncParts parts, SyncFinished finished)
    : parts_(std::move(parts)), finished_(std::move(finished)),
      upload_(parts_, [this](const auto& error) { afterUpload(error); }),
      download_(parts_, [this](const auto& error) { afterDownload(error); }) {}

RecordSync::~RecordSync() {
    parts_.session->cancel();
}

void RecordSync::start() {
    parts_.console.write("CloudKitSyncService: 开始同步ActivityRecord");
    upload_.start();
}

void RecordSync::afterUpload(const std::optional<CloudKitSyncError>& error) {
    if (error) return finished_(error);
    download_.start();
}

void RecordSync::afterDownload(const std::optional<CloudKitSyncError>& error) {
    if (!error) parts_.console.write("CloudKitSyncService: 同步完成");
    finished_(error);
}

}  // namespace quorvane
