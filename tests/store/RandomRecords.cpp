#include "store/RandomRecords.h"

namespace quorvane {
namespace {

using Record = ActivityRecord;

template <class Field, class Value>
Predicate<Record> compared(Field field, const Value& value, int how) {
    switch (how) {
    case 0: return field == value;
    case 1: return field != value;
    case 2: return field < value;
    case 3: return field <= value;
    case 4: return field > value;
    default: return field >= value;
    }
}

}  // namespace

Date RandomRecords::date() {
    const std::int64_t microseconds[] = {-1, 0, 1, 1772442000000000, 1772442000000001, 1772442000500000};
    return dateFromMicroseconds(microseconds[below(6)]);
}

std::string RandomRecords::text() {
    const std::string texts[] = {"", "a", "A", "b", "é", "工作", "a'b", "%", std::string("a\0b", 3), "\xFF"};
    return texts[below(10)];
}

std::shared_ptr<Record> RandomRecords::record() {
    auto record = std::make_shared<Record>();
    record->startTime = date();
    for (int i = 0; i < 8; ++i)
        change(*record);
    return record;
}

void RandomRecords::change(Record& record) {
    const bool isNone = below(3) == 0;
    switch (below(8)) {
    case 0: record.startTime = date(); break;
    case 1: record.endTime = isNone ? std::optional<Date>() : date(); break;
    case 2: record.appName = isNone ? std::optional<std::string>() : text(); break;
    case 3: record.category = isNone ? std::optional<std::string>() : text(); break;
    case 4: record.tags = text(); break;
    case 5: record.confidence = below(3) / 2.0; break;
    case 6: record.activityType = text(); break;
    default: record.project = isNone || projects.empty() ? nullptr : any(projects);
    }
}

Predicate<Record> RandomRecords::comparison() {
    const int how = below(6);
    switch (below(10)) {
    case 0: return compared(field(&Record::startTime), date(), how);
    case 1: return compared(field(&Record::endTime), date(), how);
    case 2: return compared(field(&Record::endTime).unindexed(), date(), how);
    case 3: return compared(field(&Record::appName), text(), how);
    case 4: return compared(field(&Record::tags), text(), how);
    case 5: return compared(field(&Record::confidence), below(3) / 2.0, how);
    case 6: return how < 3 ? field(&Record::endTime).isNone() : field(&Record::endTime).isPresent();
    case 7: return how < 3 ? field(&Record::category).isNone() : field(&Record::appName).isPresent();
    case 8: return projects.empty() ? Predicate<Record>() : refersTo(&Record::project, *any(projects));
    default: return refersToNone(&Record::project);
    }
}

Predicate<Record> RandomRecords::predicate(int depth) {
    if (depth == 0 || below(4) == 0) return below(20) == 0 ? Predicate<Record>() : comparison();
    const auto a = predicate(depth - 1);
    const auto b = predicate(depth - 1);
    return below(2) == 0 ? a && b : a || b;
}

std::vector<SortOrder> RandomRecords::sort() {
    const std::vector orders{ascending(&Record::startTime), descending(&Record::startTime),
                             ascending(&Record::endTime),   descending(&Record::endTime),
                             ascending(&Record::appName),   descending(&Record::appName),
                             descending(&Record::tags),     ascending(&Record::confidence)};
    std::vector<SortOrder> sort;
    for (int i = below(4); i > 0; --i)
        sort.push_back(any(orders));
    return sort;
}

}  // namespace quorvane
