#include "store/LongRecords.h"

namespace quorvane::LongRecords {
namespace {

class LongNode final : public PredicateNode {
public:
    void appendTo(SqlCondition& condition) const override { condition.text += sql; }
    [[nodiscard]] bool matches(const Entity& entity) const override {
        const auto& record = static_cast<const ActivityRecord&>(entity);
        if (!record.endTime()) return false;
        // In whole microseconds, as the table has them.
        const auto length = microsecondsSince1970(*record.endTime()) - microsecondsSince1970(record.startTime());
        return std::chrono::microseconds(length) > day;
    }
};

}  // namespace

Predicate<ActivityRecord> all() {
    return {std::make_shared<LongNode>()};
}

}  // namespace quorvane::LongRecords
