#pragma once

#include "platform/RunLoop.h"

namespace quorvane::platform {

/// The run loop of Qt. It uses the process's application object and makes one where there is none yet. The thread that
/// creates it is the main thread.
///
/// Timers of 5 s and more may be off by a twentieth, so that several of them share one wake-up. Sleep of the machine
/// does not count: a timer resumes with what was left of its interval.
class QtRunLoop : public RunLoop {
public:
    QtRunLoop();
    QtRunLoop(const QtRunLoop&) = delete;
    QtRunLoop& operator=(const QtRunLoop&) = delete;
    ~QtRunLoop() override;  ///< Waits for background work. Handles of timers may outlive it; they do nothing then.

    [[nodiscard]] Date now() const override;
    [[nodiscard]] Seconds uptime() const override;
    [[nodiscard]] std::unique_ptr<Timer> every(Seconds interval, std::function<void()> fire) override;
    [[nodiscard]] std::unique_ptr<WorkItem> after(Seconds delay, std::function<void()> work) override;
    void post(std::function<void()> work) override;
    void background(std::function<void()> work) override;
    [[nodiscard]] bool isMainThread() const override;

    /// Serves timers and events until `quit`; returns its status.
    int run();

    /// Serves them until `holds`, which is asked after each, for `patience` at most; whether it holds.
    bool runUntil(const std::function<bool()>& holds, Seconds patience);

    /// Runs what is posted, and what that posts in turn, until nothing is left; no timer fires.
    void runPosted();

    /// Waits until no background work is left, for `patience` at most; false if some still runs. What it would have
    /// posted stays unheard unless the loop runs on.
    bool finishBackground(Seconds patience);

    /// Ends `run`, also one that has not begun yet. From any thread.
    void quit(int status = 0);

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace quorvane::platform
