#pragma once

#include "base/Signal.h"
#include "base/Weak.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/RunLoop.h"
#include "store/ModelContainer.h"
#include "timeline/TimelineRecordSnapshot.h"

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <unordered_set>
#include <vector>

namespace quorvane {

/// The records that touch a range of time, as values: a worker reads them from the store, and from then on they follow
/// each change of the main context. There is one range at a time; another one lets go of what the one before held.
/// Nothing throws: what fails is printed. Main thread only; what it is made on outlives it.
class LiveRecords {
public:
    enum class State { reading, read, failed };

    LiveRecords(ModelContainer& store, platform::RunLoop& runLoop, ConsoleSink& console);
    LiveRecords(const LiveRecords&) = delete;
    LiveRecords& operator=(const LiveRecords&) = delete;
    ~LiveRecords();

    /// Goes to a range; nothing happens where it is there already.
    void show(DateInterval range, RecordDetail detail);
    /// Reads the range anew, for what another program has changed. What was read stays until then.
    void refresh();

    [[nodiscard]] const std::optional<DateInterval>& range() const { return range_; }
    [[nodiscard]] State state() const { return state_; }
    /// Oldest first, among equals the smaller id first; empty until they are read.
    [[nodiscard]] const std::vector<TimelineRecordSnapshot>& records() const { return records_; }
    /// Why the last reading failed; empty where it did not.
    [[nodiscard]] const std::string& failure() const { return failure_; }

    /// Sent after a reading, and after changes: once for all of a turn of the loop, and for none that can't be seen.
    Signal<> changed;

private:
    using Records = std::vector<TimelineRecordSnapshot>;

    void read();
    void take(const std::function<Records()>& records);
    void follow(const EntityChange& change);
    bool merge();

    ModelContext& context_;
    platform::RunLoop& runLoop_;
    ConsoleSink& console_;
    ModelConfiguration reading_;  ///< how a worker opens the store
    std::optional<DateInterval> range_;
    RecordDetail detail_ = RecordDetail::whole;
    State state_ = State::reading;
    Records records_;
    std::string failure_;
    std::unordered_set<std::shared_ptr<Entity>> changed_;  ///< since they were merged last
    bool isReading_ = false;
    bool isMergePosted_ = false;
    std::stop_source running_;
    Subscription contextChanged_;
    WeakSource<LiveRecords> weak_{*this};
};

}  // namespace quorvane
