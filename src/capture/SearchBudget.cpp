#include "capture/SearchBudget.h"

#include "platform/Clock.h"

#include <utility>

namespace quorvane {

SearchBudget::SearchBudget(std::stop_token stop, int visits, Seconds patience)
    : stop_(std::move(stop)), visits_(visits), end_(platform::uptime() + patience) {}

bool SearchBudget::visit() {
    if (visits_ == 0 || stop_.stop_requested() || platform::uptime() >= end_) return false;
    --visits_;
    return true;
}

}  // namespace quorvane
