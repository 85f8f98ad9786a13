#include "platform/simulated/SimulatedSerialQueue.h"

#include <utility>

namespace quorvane::platform {

void SimulatedSerialQueue::post(std::function<void()> work) {
    runLoop_.post([isOpen = std::weak_ptr(isOpen_), work = std::move(work)] {
        if (!isOpen.expired()) work();
    });
}

void SimulatedSerialQueue::every(Seconds interval, Seconds, std::function<void()> fire) {
    timer_ = runLoop_.every(interval, std::move(fire));
}

void SimulatedSerialQueue::stop() {
    timer_.reset();
    isOpen_.reset();
}

}  // namespace quorvane::platform
