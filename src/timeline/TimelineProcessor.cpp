#include "timeline/TimelineProcessor.h"

#include "base/Calendar.h"
#include "platform/InBackground.h"
#include "timeline/TimelineProcessing.h"

namespace quorvane {

void TimelineProcessor::start(std::vector<TimelineRecordSnapshot> snapshots, Date now, Publish publish) {
    cancel();
    running_ = std::stop_source();
    using Blocks = std::vector<TimelineProcessedSnapshot>;
    platform::inBackground(
        runLoop_,
        [snapshots = std::move(snapshots), now, calendar = Calendar::current(), stop = running_.get_token()]() mutable {
            return stop.stop_requested() ? Blocks()
                                         : TimelineProcessing::process(std::move(snapshots), now, calendar, stop);
        },
        [publish = std::move(publish), stop = running_.get_token()](std::future<Blocks> blocks) {
            // Asked here and not before: whoever cancels does so on this thread.
            if (!stop.stop_requested()) publish(blocks.get());
        });
}

void TimelineProcessor::cancel() {
    running_.request_stop();
}

}  // namespace quorvane
