#pragma once

#include "platform/RunLoop.h"

#include <future>
#include <memory>
#include <type_traits>
#include <utility>

namespace quorvane::platform {

/// Runs `work` on a worker thread and then `done` on the main thread with a ready future of its result (or of what it
/// threw). `work` must own or outlive all that it touches; `done` holds its owner weakly.
template <class Work, class Done>
void inBackground(RunLoop& runLoop, Work work, Done done) {
    using Result = std::invoke_result_t<Work>;
    auto task = std::make_shared<std::packaged_task<Result()>>(std::move(work));
    runLoop.background([&runLoop, task, done = std::move(done)]() mutable {
        (*task)();
        runLoop.post([task, done = std::move(done)]() mutable { done(task->get_future()); });
    });
}

}  // namespace quorvane::platform
