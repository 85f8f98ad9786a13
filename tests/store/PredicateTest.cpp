#include "store/Predicate.h"

#include "store/RandomRecords.h"
#include "support/Matchers.h"
#include "support/Matching.h"
#include "support/TemporaryStore.h"

#include <algorithm>

namespace quorvane {
namespace {

using Record = ActivityRecord;

class PredicateTest : public testing::Test {
protected:
    TemporaryStore store;
    ModelContext& context = store.context();

    /// What a fetch has to give, found by looking at every object.
    static std::vector<std::shared_ptr<Record>> expected(std::vector<std::shared_ptr<Record>> all,
                                                         const FetchDescriptor<Record>& descriptor) {
        std::erase_if(all, [&](const auto& record) { return !descriptor.predicate.matches(*record); });
        std::sort(all.begin(), all.end(),
                  [&](const auto& a, const auto& b) { return comesBefore(*a, *b, descriptor.sort); });
        if (descriptor.limit && all.size() > *descriptor.limit) all.resize(*descriptor.limit);
        return all;
    }
};

TEST_F(PredicateTest, TheDatabaseAndTheObjectsAgreeOnEveryCondition) {
    RandomRecords random(20260302);
    for (const char* name : {"a", "b", "c"})
        random.projects.push_back(insertProject(context, name));
    std::vector<std::shared_ptr<Record>> all;
    for (int round = 0; round < 40; ++round) {
        SCOPED_TRACE(testing::Message() << "round " << round);
        // Some rounds ask a saved store, the others one with changes of each kind pending.
        for (int i = 0; i < 10; ++i) {
            all.push_back(random.record());
            context.insert(all.back());
        }
        if (round % 4 == 0) context.save();
        for (int i = 0; i < 5; ++i)
            random.change(*random.any(all));
        for (int i = 0; i < 3; ++i) {
            const auto chosen = all.begin() + random.below(static_cast<int>(all.size()));
            context.remove(*chosen);
            all.erase(chosen);
        }
        if (round == 30) context.remove(random.projects.back());
        for (int query = 0; query < 25; ++query) {
            SCOPED_TRACE(testing::Message() << "query " << query);
            FetchDescriptor<Record> descriptor{.predicate = random.predicate(), .sort = random.sort()};
            if (random.below(3) == 0) descriptor.limit = static_cast<std::size_t>(random.below(20));
            ASSERT_THAT(context.fetch(descriptor), ElementsAreArray(expected(all, descriptor)));
            ASSERT_EQ(context.count(descriptor.predicate), expected(all, {.predicate = descriptor.predicate}).size());
        }
    }
}

TEST_F(PredicateTest, AMissingValueIsUnequalToEveryOtherAndOtherwiseNoMatch) {
    const auto open = aRecord().from("09:00:00").app("open").in(context);
    const auto closed = aRecord().from("09:00:00").to("10:00:00").app("closed").in(context);
    const auto end = field(&Record::endTime);
    const Date ten = at("10:00:00");
    const std::tuple<const char*, Predicate<Record>, std::vector<std::shared_ptr<Record>>> rows[] = {
        {"equal", end == ten, {closed}},
        {"not equal", end != ten, {open}},
        {"not equal to something else", end != at("11:00:00"), {open, closed}},
        {"none", end.isNone(), {open}},
        {"present", end.isPresent(), {closed}},
        {"all", {}, {open, closed}},
        {"one or all", end == ten || Predicate<Record>(), {open, closed}}};
    for (const char* when : {"unsaved", "saved"}) {
        for (const auto& [name, predicate, expected] : rows) {
            SCOPED_TRACE(testing::Message() << name << ", " << when);
            EXPECT_THAT(context.fetch<Record>({.predicate = predicate}), ElementsAreArray(expected));
        }
        context.save();
    }
}

TEST_F(PredicateTest, DatesCompareAsTheyAreStored) {
    // A third of a second is no whole number of microseconds: the condition must mean the stored instant.
    const Date start = at("09:00:00") + Seconds{1.0 / 3};
    const auto record = aRecord().in(context);
    record->startTime = start;
    for (const char* when : {"unsaved", "saved"}) {
        SCOPED_TRACE(when);
        EXPECT_EQ(context.count(field(&Record::startTime) == start), 1U);
        EXPECT_EQ(context.count(field(&Record::startTime) < start), 0U);
        context.save();
    }
    store.reopen();
    EXPECT_EQ(store.context().count(field(&Record::startTime) == start), 1U);
    EXPECT_EQ(store.context().count(field(&Record::startTime) == store.context().fetch<Record>().front()->startTime()),
              1U);
}

}  // namespace
}  // namespace quorvane
