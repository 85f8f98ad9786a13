#pragma once

#include "base/Date.h"

#include <stop_token>

namespace quorvane {

/// What a search in another program's tree may cost: a tree may be endless, and a program slow. So many elements, so
/// long, and no longer than somebody waits for the answer. One thread.
class SearchBudget {
public:
    explicit SearchBudget(std::stop_token stop = {}, int visits = 2000, Seconds patience = 1s);

    /// One more element is looked at; false once the budget is used up.
    [[nodiscard]] bool visit();

private:
    std::stop_token stop_;
    int visits_;
    Seconds end_;  ///< as uptime
};

}  // namespace quorvane
