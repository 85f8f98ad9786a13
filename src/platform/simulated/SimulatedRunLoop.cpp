#include "platform/simulated/SimulatedRunLoop.h"

#include "base/Calendar.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <compare>
#include <map>
#include <string>
#include <utility>

namespace quorvane::platform {
namespace {

/// A flag that is set for as long as a scope lasts.
class Raised {
public:
    explicit Raised(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;
    ~Raised() { flag_ = before_; }

private:
    bool& flag_;
    bool before_;
};

std::int64_t microseconds(Seconds duration) {
    return static_cast<std::int64_t>(std::llround(duration.count() * 1e6));
}

}  // namespace

/// What is due later, in the order in which it will run. Handles hold it weakly and may outlive the loop.
class SimulatedRunLoop::Schedule {
public:
    struct Entry {
        std::int64_t due = 0;
        std::uint64_t order = 0;
        std::int64_t interval = 0;  ///< 0: runs once
        std::function<void()> work;
    };

    std::shared_ptr<Entry> add(std::int64_t due, std::int64_t interval, std::function<void()> work) {
        auto entry = std::make_shared<Entry>(Entry{due, nextOrder_++, interval, std::move(work)});
        insert(entry);
        return entry;
    }
    void insert(const std::shared_ptr<Entry>& entry) { entries_[{entry->due, entry->order}] = entry; }
    void remove(const Entry& entry) { entries_.erase({entry.due, entry.order}); }

    [[nodiscard]] std::shared_ptr<Entry> first() const { return entries_.empty() ? nullptr : entries_.begin()->second; }
    [[nodiscard]] std::size_t size() const { return entries_.size(); }

    /// The handle whose destruction cancels the entry.
    template <class Handle>
    class Cancelling : public Handle {
    public:
        Cancelling(std::weak_ptr<Schedule> schedule, std::shared_ptr<Entry> entry)
            : schedule_(std::move(schedule)), entry_(std::move(entry)) {}
        Cancelling(const Cancelling&) = delete;
        Cancelling& operator=(const Cancelling&) = delete;
        ~Cancelling() override {
            if (const auto schedule = schedule_.lock()) schedule->remove(*entry_);
        }

    private:
        std::weak_ptr<Schedule> schedule_;
        std::shared_ptr<Entry> entry_;
    };

private:
    std::map<std::pair<std::int64_t, std::uint64_t>, std::shared_ptr<Entry>> entries_;
    std::uint64_t nextOrder_ = 0;
};

SimulatedRunLoop::SimulatedRunLoop(Date start)
    : clockAtStart_(microsecondsSince1970(start)), schedule_(std::make_shared<Schedule>()) {}

SimulatedRunLoop::~SimulatedRunLoop() = default;

Date SimulatedRunLoop::now() const {
    return dateFromMicroseconds(clockAtStart_ + elapsed_);
}

std::unique_ptr<Timer> SimulatedRunLoop::every(Seconds interval, std::function<void()> fire) {
    assert(isMainThread() && interval > 0s);
    const auto step = std::max<std::int64_t>(1, microseconds(interval));
    return std::make_unique<Schedule::Cancelling<Timer>>(schedule_,
                                                         schedule_->add(elapsed_ + step, step, std::move(fire)));
}

std::unique_ptr<WorkItem> SimulatedRunLoop::after(Seconds delay, std::function<void()> work) {
    assert(isMainThread());
    const auto due = elapsed_ + std::max<std::int64_t>(0, microseconds(delay));
    return std::make_unique<Schedule::Cancelling<WorkItem>>(schedule_, schedule_->add(due, 0, std::move(work)));
}

void SimulatedRunLoop::post(std::function<void()> work) {
    const std::lock_guard lock(mutex_);
    posted_.push_back({std::move(work), false});
}

void SimulatedRunLoop::background(std::function<void()> work) {
    const std::lock_guard lock(mutex_);
    posted_.push_back({std::move(work), true});
}

bool SimulatedRunLoop::isMainThread() const {
    return std::this_thread::get_id() == thread_ && !isInBackground_;
}

void SimulatedRunLoop::playUntil(Date end) {
    const auto clock = microsecondsSince1970(end);
    play([this, clock] { return clock - clockAtStart_ - elapsed_; });
}

void SimulatedRunLoop::playFor(Seconds duration) {
    const std::int64_t end = elapsed_ + microseconds(duration);
    play([this, end] { return end - elapsed_; });
}

void SimulatedRunLoop::play(const std::function<std::int64_t()>& remaining) {
    assert(isMainThread() && !isPlaying_);
    const Raised playing(isPlaying_);
    for (;;) {
        runPosted();
        const auto left = remaining();
        const auto next = schedule_->first();
        if (!next || next->due - elapsed_ > std::max<std::int64_t>(left, 0)) {
            elapsed_ += std::max<std::int64_t>(left, 0);
            return;
        }
        elapsed_ = std::max(elapsed_.load(), next->due);
        ++wakeUps_;
        fireDue();
    }
}

void SimulatedRunLoop::fireDue() {
    const std::int64_t instant = elapsed_;
    for (auto entry = schedule_->first(); entry && entry->due <= instant; entry = schedule_->first()) {
        schedule_->remove(*entry);
        if (entry->interval == 0) {
            std::exchange(entry->work, nullptr)();
        } else {
            // The next one stays on the grid of the first, however late this one is.
            entry->due += ((elapsed_ - entry->due) / entry->interval + 1) * entry->interval;
            schedule_->insert(entry);
            entry->work();
        }
        entry.reset();
        runPosted();
    }
}

void SimulatedRunLoop::runPosted() {
    for (;;) {
        Task task;
        {
            const std::lock_guard lock(mutex_);
            if (posted_.empty()) return;
            task = std::move(posted_.front());
            posted_.pop_front();
        }
        if (task.isBackground && isHoldingBackground_) {
            held_.push_back(std::move(task));
        } else {
            run(task);
        }
    }
}

void SimulatedRunLoop::run(const Task& task) {
    if (task.isBackground) {
        const Raised inBackground(isInBackground_);
        task.work();
    } else {
        task.work();
    }
}

void SimulatedRunLoop::releaseBackground() {
    isHoldingBackground_ = false;
    const std::lock_guard lock(mutex_);
    std::move(held_.begin(), held_.end(), std::back_inserter(posted_));
    held_.clear();
}

void SimulatedRunLoop::setClock(Date date) {
    clockAtStart_ = microsecondsSince1970(date) - elapsed_;
}

void SimulatedRunLoop::sleepFor(Seconds duration) {
    elapsed_ += std::max<std::int64_t>(0, microseconds(duration));
}

Date SimulatedRunLoop::timeOfDay(std::string_view time) const {
    const auto sinceMidnight = parseIso8601("1970-01-01T" + std::string(time) + "Z");
    const auto calendar = Calendar::current();
    const double seconds = secondsSince1970(sinceMidnight.value());
    const int hour = static_cast<int>(seconds / 3600);
    const int minute = static_cast<int>(seconds / 60) % 60;
    return calendar.date(calendar.civilDate(now()), hour, minute, seconds - hour * 3600 - minute * 60);
}

int SimulatedRunLoop::pendingTimers() const {
    return static_cast<int>(schedule_->size());
}

}  // namespace quorvane::platform
