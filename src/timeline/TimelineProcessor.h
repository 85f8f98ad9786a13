#pragma once

#include "platform/RunLoop.h"
#include "timeline/ProcessedActivityItem.h"
#include "timeline/TimelineRecordSnapshot.h"

#include <functional>
#include <stop_token>
#include <vector>

namespace quorvane {

/// Processes a day beside the main thread. A new run cancels the one before: only the newest publishes, and none after
/// this object is gone. Main thread only; the run loop outlives it.
class TimelineProcessor {
public:
    /// Takes the blocks in draw order, on the main thread.
    using Publish = std::function<void(std::vector<TimelineProcessedSnapshot> blocks)>;

    explicit TimelineProcessor(platform::RunLoop& runLoop) : runLoop_(runLoop) {}
    TimelineProcessor(const TimelineProcessor&) = delete;
    TimelineProcessor& operator=(const TimelineProcessor&) = delete;
    ~TimelineProcessor() { cancel(); }

    void start(std::vector<TimelineRecordSnapshot> snapshots, Date now, Publish publish);
    void cancel();

private:
    platform::RunLoop& runLoop_;
    std::stop_source running_;
};

}  // namespace quorvane
