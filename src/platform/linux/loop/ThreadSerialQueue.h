#pragma once

#include "platform/SerialQueue.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <thread>

namespace quorvane::platform {

/// A queue on a thread. The thread is there while there is work or a timer: an idle queue costs
/// nothing, and one with a timer wakes for that alone. It begins anew when there is work again.
class ThreadSerialQueue final : public SerialQueue {
public:
    /// `label`: what tools call the thread, which show its first 15 bytes.
    explicit ThreadSerialQueue(std::string label);
    ThreadSerialQueue(const ThreadSerialQueue&) = delete;
    ThreadSerialQueue& operator=(const ThreadSerialQueue&) = delete;
    ~ThreadSerialQueue() override { stop(); }

    void post(std::function<void()> work) override;
    void every(Seconds interval, Seconds leeway, std::function<void()> fire) override;
    void endTimer() override;
    void stop() override;

private:
    using Clock = std::chrono::steady_clock;

    void wake();
    void run();
    void runNext(std::unique_lock<std::mutex>& lock);

    std::string label_;
    std::mutex mutex_;  ///< guards what follows, but for `thread_` inside `stop`
    std::condition_variable changed_;
    std::deque<std::function<void()>> work_;
    std::function<void()> fire_;
    Clock::duration interval_{};
    Clock::time_point next_;
    bool isRunning_ = false;
    bool isStopped_ = false;
    std::thread thread_;
};

}  // namespace quorvane::platform
