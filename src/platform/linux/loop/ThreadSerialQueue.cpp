#include "platform/linux/loop/ThreadSerialQueue.h"

#include <algorithm>
#include <cassert>
#include <pthread.h>
#include <sys/prctl.h>
#include <system_error>
#include <utility>

namespace quorvane::platform {
namespace {

constexpr std::size_t longestName = 15;            // the kernel takes no more
constexpr unsigned long usualTimerSlack = 50'000;  // ns, as the kernel gives it to a program's first thread

}  // namespace

ThreadSerialQueue::ThreadSerialQueue(std::string label) : label_(std::move(label)) {}

void ThreadSerialQueue::post(std::function<void()> work) {
    const std::lock_guard lock(mutex_);
    if (isStopped_) return;
    work_.push_back(std::move(work));
    wake();
}

void ThreadSerialQueue::every(Seconds interval, Seconds leeway, std::function<void()> fire) {
    const std::lock_guard lock(mutex_);
    assert(interval > 0s && !fire_);
    if (isStopped_) return;
    interval_ = std::chrono::duration_cast<Clock::duration>(interval);
    next_ = Clock::now() + interval_;
    fire_ = std::move(fire);
    // The kernel lets the thread's time-outs end so much later where that spares a wake-up.
    work_.emplace_back([slack = static_cast<unsigned long>(leeway / 1ns)] { prctl(PR_SET_TIMERSLACK, slack); });
    wake();
}

void ThreadSerialQueue::endTimer() {
    const std::lock_guard lock(mutex_);
    fire_ = nullptr;
}

void ThreadSerialQueue::stop() {
    {
        const std::lock_guard lock(mutex_);
        isStopped_ = true;
        changed_.notify_one();
    }
    if (thread_.joinable()) thread_.join();
    work_.clear();
    fire_ = nullptr;
}

/// Makes the thread look, or makes the thread.
void ThreadSerialQueue::wake() {
    if (isRunning_) {
        changed_.notify_one();
        return;
    }
    if (thread_.joinable()) thread_.join();  // it has left `run` or is about to, and needs the lock no more
    try {
        thread_ = std::thread([this] { run(); });
        isRunning_ = true;
    } catch (const std::system_error&) {  // the machine has no thread left: the work waits for the next that comes
    }
}

void ThreadSerialQueue::run() {
    pthread_setname_np(pthread_self(), label_.substr(0, longestName).c_str());
    prctl(PR_SET_TIMERSLACK, usualTimerSlack);  // that of the thread that has made it may be a timer's leeway
    std::unique_lock lock(mutex_);
    while (!isStopped_ && (fire_ || !work_.empty()))
        runNext(lock);
    isRunning_ = false;
}

void ThreadSerialQueue::runNext(std::unique_lock<std::mutex>& lock) {
    std::function<void()> running;
    if (!work_.empty()) {
        running = std::move(work_.front());
        work_.pop_front();
    } else if (const auto now = Clock::now(); now >= next_) {
        next_ = std::max(next_ + interval_, now);  // what was missed is not made up for
        running = fire_;
    } else {
        changed_.wait_until(lock, next_);
        return;
    }
    lock.unlock();
    running();
    running = nullptr;  // what it holds may take locks of its own as it goes
    lock.lock();
}

}  // namespace quorvane::platform
