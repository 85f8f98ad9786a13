#pragma once

#include "store/ActivityRecord.h"
#include "store/ModelContext.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace quorvane {

/// Free records in random order, from three weeks before `now` to a day behind it, whose times lie near the limits of
/// all passes: touching, overlapping by 300 s, open, backwards, starting at one instant; some are settled. One seed
/// makes one history.
std::vector<std::shared_ptr<ActivityRecord>> randomHistory(unsigned seed, Date now, int count = 100);

/// What the services may change of a record.
struct RecordState {
    Date start;
    std::optional<Date> end;
    Date updatedAt;
    friend bool operator==(const RecordState&, const RecordState&) = default;
};
using StoreState = std::map<Uuid, RecordState>;

/// All records of the context.
StoreState stateOf(ModelContext& context);

}  // namespace quorvane
