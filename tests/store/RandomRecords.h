#pragma once

#include "store/ActivityRecord.h"
#include "store/ModelContext.h"

#include <memory>
#include <random>
#include <vector>

namespace quorvane {

/// Makes records, changes and predicates whose values collide often: ties and missing values are the rule. One seed
/// makes one sequence.
class RandomRecords {
public:
    explicit RandomRecords(unsigned seed) : random_(seed) {}

    [[nodiscard]] std::shared_ptr<ActivityRecord> record();

    /// Assigns a random value to a random attribute.
    void change(ActivityRecord& record);

    /// A condition of up to eight comparisons.
    [[nodiscard]] Predicate<ActivityRecord> predicate(int depth = 3);

    /// Up to three sort orders.
    [[nodiscard]] std::vector<SortOrder> sort();

    /// One of 0 to `end` - 1.
    int below(int end) { return std::uniform_int_distribution(0, end - 1)(random_); }

    template <class Item>
    Item any(const std::vector<Item>& items) {
        return items[static_cast<std::size_t>(below(static_cast<int>(items.size())))];
    }

    /// Relationships lead to one of these or nowhere.
    std::vector<std::shared_ptr<Project>> projects;

private:
    [[nodiscard]] Date date();
    [[nodiscard]] std::string text();
    [[nodiscard]] Predicate<ActivityRecord> comparison();

    std::mt19937 random_;
};

}  // namespace quorvane
