#include "store/LiveQuery.h"

#include "store/RandomRecords.h"
#include "support/Matchers.h"
#include "support/Matching.h"
#include "support/TemporaryStore.h"

namespace quorvane {
namespace {

using Record = ActivityRecord;
using Query = LiveQuery<Record>;
using Change = QueryChange<Record>;

class LiveQueryTest : public testing::Test {
protected:
    TemporaryStore store;
    ModelContext& context = store.context();

    const FetchDescriptor<Record> morning{.predicate = field(&Record::startTime) < at("12:00:00"),
                                          .sort = {ascending(&Record::startTime)}};
};

TEST_F(LiveQueryTest, ItTellsWhatCameWhatWentAndWhatStayedWithOtherValues) {
    const auto first = aRecord().from("09:00:00").in(context);
    const auto afternoon = aRecord().from("15:00:00").in(context);
    context.save();
    Query query(context, morning);
    std::vector<Change> told;
    const auto subscription = query.didChange.subscribe([&](const Change& change) { told.push_back(change); });
    const auto expectOne = [&](auto list, const std::shared_ptr<Record>& record) {
        ASSERT_THAT(told, ElementsAre(testing::Field(list, ElementsAre(record))));
        EXPECT_EQ(told[0].inserted.size() + told[0].removed.size() + told[0].updated.size(), 1U);
        told.clear();
    };
    const auto second = aRecord().from("08:00:00").in(context);
    expectOne(&Change::inserted, second);
    afternoon->startTime = at("10:00:00");  // an update that brings it in
    expectOne(&Change::inserted, afternoon);
    second->startTime = at("11:00:00");
    expectOne(&Change::updated, second);

    first->windowTitle = "title";
    expectOne(&Change::updated, first);

    first->startTime = at("13:00:00");  // and one that takes it out
    expectOne(&Change::removed, first);

    context.remove(second);
    expectOne(&Change::removed, second);

    first->windowTitle = "another";  // none of this query's
    insertProject(context, "Website");
    context.save();
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(query.results(), ElementsAre(afternoon));
}

TEST_F(LiveQueryTest, FollowingChangesGivesWhatAFetchWouldGive) {
    RandomRecords random(31415);
    for (const char* name : {"a", "b", "c"})
        random.projects.push_back(insertProject(context, name));
    const auto other = store.anotherContext();
    std::vector<std::unique_ptr<Query>> queries;
    std::vector<FetchDescriptor<Record>> descriptors;
    for (int i = 0; i < 12; ++i) {
        descriptors.push_back({.predicate = random.predicate(), .sort = random.sort()});
        queries.push_back(std::make_unique<Query>(context, descriptors.back()));
    }
    for (int step = 0; step < 600; ++step) {
        const auto all = context.fetch<Record>();
        const auto any = all.empty() ? nullptr : random.any(all);
        switch (const int what = random.below(20); what) {
        case 0: context.save(); break;
        case 1:
            if (any) context.remove(any);
            break;
        case 2: {  // another program changes several rows at once; one fetch brings them all
            context.save();
            const auto ours = std::exchange(random.projects, other->fetch<Project>());
            for (const auto& record : other->fetch<Record>())
                if (random.below(4) == 0) random.change(*record);
            random.projects = ours;
            for (const auto& record : other->fetch<Record>({.limit = 1}))
                other->remove(record);
            other->save();
            for (const auto& query : queries)
                query->refresh();
            break;
        }
        default:
            if (any && what < 14)
                random.change(*any);
            else if (all.size() < 40)
                context.insert(random.record());
        }
        if (step == 500) context.remove(random.projects.front());
        for (std::size_t i = 0; i < queries.size(); ++i) {
            SCOPED_TRACE(testing::Message() << "step " << step << ", query " << i);
            ASSERT_THAT(queries[i]->results(), ElementsAreArray(context.fetch(descriptors[i])));
        }
    }
}

TEST_F(LiveQueryTest, AListenerMayChangeFurtherObjects) {
    std::vector<std::shared_ptr<Record>> records;
    for (const char* start : {"07:00:00", "08:00:00", "09:00:00", "10:00:00"})
        records.push_back(aRecord().from(start).in(context));
    Query first(context, morning);
    Query second(context, morning);  // hears of the nested change before the one around it
    bool isDone = false;
    const auto subscription = first.didChange.subscribe([&](const Change&) {
        if (std::exchange(isDone, true)) return;
        records[3]->startTime = at("07:30:00");
    });
    records[0]->startTime = at("09:30:00");
    EXPECT_THAT(first.results(), ElementsAre(records[3], records[1], records[2], records[0]));
    EXPECT_THAT(second.results(), ElementsAreArray(first.results()));
}

TEST_F(LiveQueryTest, ItMayEndWhileItTells) {
    auto query = std::make_unique<Query>(context, morning);
    const auto subscription = query->didChange.subscribe([&](const Change&) { query.reset(); });
    const auto record = aRecord().from("09:00:00").in(context);
    record->windowTitle = "title";
    EXPECT_EQ(query, nullptr);
}

}  // namespace
}  // namespace quorvane
