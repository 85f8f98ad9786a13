#pragma once

#include "platform/RunLoop.h"

#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace quorvane {

/// A run loop whose background work runs on real threads, for tests of what threads share. It has no timers.
class ThreadedRunLoop final : public platform::RunLoop {
public:
    ~ThreadedRunLoop() override;

    [[nodiscard]] Date now() const override;
    [[nodiscard]] Seconds uptime() const override;
    [[nodiscard]] std::unique_ptr<platform::Timer> every(Seconds interval, std::function<void()> fire) override;
    [[nodiscard]] std::unique_ptr<platform::WorkItem> after(Seconds delay, std::function<void()> work) override;
    void post(std::function<void()> work) override;
    void background(std::function<void()> work) override;
    [[nodiscard]] bool isMainThread() const override { return std::this_thread::get_id() == thread_; }

    /// Waits for all background work and runs all that is posted, until none of both is left.
    void runToTheEnd();

private:
    void runPosted();

    std::thread::id thread_ = std::this_thread::get_id();
    std::vector<std::thread> workers_;
    std::mutex mutex_;  ///< guards `posted_`
    std::deque<std::function<void()>> posted_;
};

}  // namespace quorvane
