#pragma once

#include "platform/RunLoop.h"

#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string_view>
#include <thread>

namespace quorvane::platform {

/// A run loop whose time passes only when it is played. What is due runs in the order of its due time and, at the same
/// instant, of its creation; after each, what was posted meanwhile. Nothing depends on the real clock.
class SimulatedRunLoop : public RunLoop {
public:
    explicit SimulatedRunLoop(Date start);
    ~SimulatedRunLoop() override;

    [[nodiscard]] Date now() const override;
    [[nodiscard]] std::unique_ptr<Timer> every(Seconds interval, std::function<void()> fire) override;
    [[nodiscard]] std::unique_ptr<WorkItem> after(Seconds delay, std::function<void()> work) override;
    void post(std::function<void()> work) override;

    /// Runs `work` in the loop's next turn and on its thread, but with `isMainThread()` false meanwhile.
    void background(std::function<void()> work) override;
    [[nodiscard]] bool isMainThread() const override;

    /// Lets time pass until the clock shows `end`, which is still played. A date that has passed runs only what is due.
    void playUntil(Date end);

    /// The same for a time of the present day; see `timeOfDay`.
    void playUntil(std::string_view time) { playUntil(timeOfDay(time)); }

    /// Lets so much time pass, whatever happens to the clock meanwhile.
    void playFor(Seconds duration);

    /// Runs posted and background work until none is left; no time passes and no timer fires.
    void runPosted();

    /// Sets the clock, forward or backward. What is pending stays as far away as it was.
    void setClock(Date date);

    /// The machine sleeps: time passes and nothing runs. What came due meanwhile runs once when the loop plays on.
    void sleepFor(Seconds duration);

    /// Until released, background work waits, so that its result comes late.
    void holdBackground() { isHoldingBackground_ = true; }
    void releaseBackground();

    /// "09:00:00" or "09:00:00.5" on the present day in the process's time zone.
    [[nodiscard]] Date timeOfDay(std::string_view time) const;

    /// Since the loop was made; the clock may be set without it noticing.
    [[nodiscard]] Seconds uptime() const override { return std::chrono::microseconds{elapsed_.load()}; }

    /// How often the loop stopped waiting because something was due; what is due at the same instant counts once.
    [[nodiscard]] int wakeUps() const { return wakeUps_; }

    /// Timers and work items that have still to fire.
    [[nodiscard]] int pendingTimers() const;

private:
    class Schedule;
    struct Task {
        std::function<void()> work;
        bool isBackground = false;
    };

    void play(const std::function<std::int64_t()>& remaining);
    void fireDue();
    void run(const Task& task);

    // Time is counted in whole microseconds, so that a long day accumulates no error. Other threads may ask for it.
    std::atomic<std::int64_t> elapsed_ = 0;
    std::atomic<std::int64_t> clockAtStart_;  ///< what the clock would have shown at `elapsed_` 0
    std::shared_ptr<Schedule> schedule_;
    std::thread::id thread_ = std::this_thread::get_id();
    std::mutex mutex_;  ///< guards `posted_`
    std::deque<Task> posted_;
    std::deque<Task> held_;
    bool isHoldingBackground_ = false;
    bool isInBackground_ = false;
    bool isPlaying_ = false;
    int wakeUps_ = 0;
};

}  // namespace quorvane::platform
