#include "support/ThreadedRunLoop.h"

#include "platform/Clock.h"

#include <cassert>
#include <utility>

namespace quorvane {

ThreadedRunLoop::~ThreadedRunLoop() {
    for (std::thread& worker : workers_)
        worker.join();
}

Date ThreadedRunLoop::now() const {
    return platform::currentDate();
}

Seconds ThreadedRunLoop::uptime() const {
    return platform::uptime();
}

std::unique_ptr<platform::Timer> ThreadedRunLoop::every(Seconds, std::function<void()>) {
    assert(false);
    return nullptr;
}

std::unique_ptr<platform::WorkItem> ThreadedRunLoop::after(Seconds, std::function<void()>) {
    assert(false);
    return nullptr;
}

void ThreadedRunLoop::post(std::function<void()> work) {
    const std::lock_guard lock(mutex_);
    posted_.push_back(std::move(work));
}

void ThreadedRunLoop::background(std::function<void()> work) {
    workers_.emplace_back(std::move(work));
}

void ThreadedRunLoop::runPosted() {
    for (;;) {
        std::function<void()> work;
        {
            const std::lock_guard lock(mutex_);
            if (posted_.empty()) return;
            work = std::move(posted_.front());
            posted_.pop_front();
        }
        work();
    }
}

void ThreadedRunLoop::runToTheEnd() {
    while (!workers_.empty()) {
        for (std::thread& worker : std::exchange(workers_, {}))
            worker.join();
        runPosted();
    }
    runPosted();
}

}  // namespace quorvane
