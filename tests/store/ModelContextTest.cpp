#include "store/ModelContext.h"

#include "store/AppSettings.h"
#include "store/Project.h"
#include "store/SqlTrace.h"
#include "support/Matchers.h"
#include "support/TemporaryStore.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quorvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

using Record = ActivityRecord;

class ModelContextTest : public testing::Test {
protected:
    SqlTrace trace;
    TemporaryStore store;
    ModelContext& context = store.context();

    std::shared_ptr<Record> insertAndSave(const RecordBuilder& builder) {
        auto record = builder.in(context);
        context.save();
        return record;
    }
    std::vector<std::string> apps(const FetchDescriptor<Record>& descriptor = {}) {
        std::vector<std::string> names;
        for (const auto& record : context.fetch(descriptor))
            names.push_back(record->appName().value_or("none"));
        return names;
    }
};

TEST_F(ModelContextTest, EveryAttributeSurvivesSavingToTheMicrosecond) {
    const auto project = insertProject(context, "Website");
    const auto record = std::make_shared<Record>(Record::Values{.startTime = at("09:00:00.123456"),
                                                                .endTime = at("09:30:00.654321"),
                                                                .activityType = ActivityType::url,
                                                                .appBundleId = "org.example.browser",
                                                                .appName = "Browser",
                                                                .windowTitle = std::string("zero \0 byte", 11),
                                                                .documentPath = "/home/ann/a \"quoted\" name",
                                                                .url = "https://example.org/?q=%20",
                                                                .category = ActivityCategory::work,
                                                                .tags = "a,b",
                                                                .source = "",
                                                                .confidence = 0.1,
                                                                .billingStatus = BillingStatus::excluded,
                                                                .deviceId = "device",
                                                                .userLocalId = "😀 not \xFF UTF-8",
                                                                .createdAt = at("1969-12-31 23:59:59.5"),
                                                                .updatedAt = at("2200-01-01 00:00:00"),
                                                                .cloudKitRecordID = "name",
                                                                .project = project});
    context.insert(record);
    context.save();
    std::vector<SqlValue> before;
    for (const auto& attribute : Record::description().attributes)
        before.push_back(attribute.get(*record));

    store.reopen();
    const auto found = store.context().fetch<Record>();
    ASSERT_THAT(found, SizeIs(1));
    for (std::size_t i = 0; i < before.size(); ++i) {
        SCOPED_TRACE(Record::description().attributes[i].name);
        EXPECT_EQ(compare(Record::description().attributes[i].get(*found.front()), before[i]), 0);
    }
    EXPECT_EQ(found.front()->project()->name(), "Website");
}

TEST_F(ModelContextTest, AColumnThatHoldsNumbersTakesWhatIsNone) {
    aRecord().in(context)->confidence = std::numeric_limits<double>::quiet_NaN();
    context.save();
    store.reopen();
    EXPECT_EQ(store.context().fetch<Record>().front()->confidence(), 0.0);
}

TEST_F(ModelContextTest, ARowHasOneObject) {
    const auto record = insertAndSave(aRecord().app("Editor"));
    EXPECT_THAT(context.fetch<Record>(), ElementsAre(record));
    EXPECT_EQ(context.object(Record::description(), record->objectId()), record);
    EXPECT_THAT(context.fetch<Record>({.predicate = field(&Record::id) == record->id(), .limit = 1}),
                ElementsAre(record));
}

TEST_F(ModelContextTest, AnObjectThatNobodyHoldsIsMadeAnew) {
    const Uuid id = insertAndSave(aRecord().app("Editor"))->id();
    const auto again = context.fetch<Record>();
    ASSERT_THAT(again, SizeIs(1));
    EXPECT_EQ(again.front()->id(), id);
    EXPECT_EQ(again.front()->context(), &context);
}

TEST_F(ModelContextTest, ChangesThatNobodyHoldsAreStillSaved) {
    insertAndSave(aRecord().app("Editor"));
    context.fetch<Record>().front()->appName = "Browser";
    context.save();
    store.reopen();
    EXPECT_EQ(store.context().fetch<Record>().front()->appName(), "Browser");
}

TEST_F(ModelContextTest, FetchesSeeWhatIsNotSavedYet) {
    const auto early = insertAndSave(aRecord().from("09:00:00").app("early"));
    const auto late = insertAndSave(aRecord().from("11:00:00").app("late"));
    const auto gone = insertAndSave(aRecord().from("09:30:00").app("gone"));
    late->startTime = at("08:00:00");                        // an update moves it
    context.remove(gone);                                    // a removal hides it
    aRecord().from("09:15:00").app("new").in(context);       // an insertion adds
    aRecord().from("09:00:00").app("new twin").in(context);  // a tie: behind what is saved
    early->windowTitle = "changed";

    const std::vector<SortOrder> byStart{ascending(&Record::startTime)};
    EXPECT_THAT(apps({.sort = byStart}), ElementsAre("late", "early", "new twin", "new"));
    EXPECT_THAT(apps({.sort = {descending(&Record::startTime)}}), ElementsAre("new", "early", "new twin", "late"));
    EXPECT_THAT(apps({.sort = byStart, .limit = 2}), ElementsAre("late", "early"));
    EXPECT_THAT(apps({.sort = byStart, .limit = 0}), IsEmpty());
    const auto fromNine = field(&Record::startTime) >= at("09:00:00");
    EXPECT_THAT(apps({.predicate = fromNine, .sort = byStart}), ElementsAre("early", "new twin", "new"));
    EXPECT_EQ(context.count(fromNine), 3U);
    EXPECT_EQ(context.count<Record>(), 4U);
    EXPECT_THAT(apps({.predicate = field(&Record::windowTitle) == "changed"}), ElementsAre("early"));
    EXPECT_THAT(apps(), ElementsAre("early", "late", "new", "new twin"));  // the order of insertion

    context.save();
    EXPECT_THAT(apps({.sort = byStart}), ElementsAre("late", "early", "new twin", "new"));
    EXPECT_THAT(apps(), ElementsAre("early", "late", "new", "new twin"));
    EXPECT_EQ(context.count(fromNine), 3U);
}

TEST_F(ModelContextTest, ALimitIsFilledAlthoughChangedAndRemovedRowsStandFirstInTheTable) {
    std::vector<std::shared_ptr<Record>> records;
    for (int hour = 0; hour < 10; ++hour)
        records.push_back(aRecord().from(fmt::format("{:02}:00:00", hour)).app(std::to_string(hour)).in(context));
    context.save();
    for (int hour = 0; hour < 4; ++hour)
        context.remove(records[static_cast<std::size_t>(hour)]);
    records[4]->startTime = at("23:00:00");
    EXPECT_THAT(apps({.sort = {ascending(&Record::startTime)}, .limit = 3}), ElementsAre("5", "6", "7"));
}

TEST_F(ModelContextTest, CountingMakesNoObjects) {
    for (int i = 0; i < 3; ++i)
        aRecord().in(context);
    context.save();
    aRecord().in(context);
    trace.clear();
    EXPECT_EQ(context.count<Record>(), 4U);
    EXPECT_THAT(trace.statements("SELECT"), ElementsAre(Not(HasSubstr("start_time"))));
}

TEST_F(ModelContextTest, OnlyChangedColumnsAreWritten) {
    const auto record = insertAndSave(aRecord().app("Editor").title("a"));
    const auto untouched = insertAndSave(aRecord().app("Browser"));
    record->windowTitle = "b";
    record->windowTitle = "c";
    record->tags = "x";
    untouched->appName = "Browser";  // no change
    trace.clear();
    context.save();
    EXPECT_THAT(trace.statements("UPDATE"),
                ElementsAre(fmt::format("UPDATE activity_record SET window_title = 'c', tags = 'x' WHERE pk = {}",
                                        record->objectId())));
    trace.clear();
    context.save();
    EXPECT_THAT(trace.statements("BEGIN"), IsEmpty());
}

TEST_F(ModelContextTest, RemovedObjectsStayReadableAndTakeNoPartAnyMore) {
    const auto project = insertProject(context, "Website");
    const auto saved = insertAndSave(aRecord().app("saved").project(project));
    const auto unsaved = aRecord().app("unsaved").project(project).in(context);
    store.reopen();  // so that no object has loaded its project yet
    ModelContext& fresh = store.context();
    const auto found = fresh.fetch<Record>().front();
    fresh.remove(found);
    EXPECT_TRUE(found->isDeleted());
    EXPECT_EQ(found->context(), nullptr);
    EXPECT_EQ(found->appName(), "saved");
    ASSERT_NE(found->project(), nullptr);
    EXPECT_EQ(found->project()->name(), "Website");
    found->appName = "changed later";
    fresh.insert(found);
    fresh.remove(found);
    EXPECT_THAT(fresh.fetch<Record>(), IsEmpty());
    fresh.save();
    EXPECT_THAT(fresh.fetch<Record>(), IsEmpty());
    EXPECT_FALSE(fresh.hasChanges());
}

TEST_F(ModelContextTest, AnInsertionThatIsRemovedBeforeItIsSavedLeavesNoTrace) {
    const auto record = aRecord().in(context);
    context.remove(record);
    EXPECT_TRUE(record->isDeleted());
    EXPECT_FALSE(context.hasChanges());
    context.save();
    EXPECT_EQ(context.count<Record>(), 0U);
}

TEST_F(ModelContextTest, ARemovedRowNumberIsNeverGivenAgain) {
    const auto first = insertAndSave(aRecord());
    const std::int64_t row = first->objectId();
    context.remove(first);
    context.save();
    EXPECT_NE(insertAndSave(aRecord())->objectId(), row);
}

TEST_F(ModelContextTest, AnObjectMayOutliveItsContext) {
    const auto record = insertAndSave(aRecord().app("Editor"));
    const auto unsaved = aRecord().app("Browser").in(context);
    store.close();
    EXPECT_EQ(record->context(), nullptr);
    record->appName = "changed";
    unsaved->appName = "changed";
    EXPECT_EQ(record->appName(), "changed");
    EXPECT_FALSE(record->isDeleted());
    EXPECT_EQ(record->project(), nullptr);

    store.reopen();
    store.context().insert(record);  // its row is in the store already
    store.context().save();
    EXPECT_THAT(store.context().fetch<Record>(), ElementsAre(isRecord("Editor", "09:00:00")));
}

TEST_F(ModelContextTest, AContextMayOutliveItsObjects) {
    insertAndSave(aRecord().app("Editor"));
    for (int i = 0; i < 3; ++i)
        EXPECT_THAT(apps(), ElementsAre("Editor"));
    context.fetch<Record>().front()->windowTitle = "a";
    context.save();
    EXPECT_THAT(apps(), ElementsAre("Editor"));
}

TEST_F(ModelContextTest, ListenersHearEachChangeAsItHappens) {
    std::vector<std::string> heard;
    const auto subscription = context.didChange.subscribe([&](const EntityChange& change) {
        const char* const kinds[] = {"inserted", "updated", "removed"};
        heard.push_back(
            fmt::format("{} {}", kinds[static_cast<int>(change.kind)], change.entity->entityDescription().name));
    });
    int changes = 0;
    const auto project = insertProject(context, "Website");
    const auto record = aRecord().project(project).in(context);
    const auto ofRecord = record->changed.subscribe([&] { ++changes; });
    record->tags = "a";
    record->tags = "a";
    context.save();
    context.remove(project);
    EXPECT_THAT(heard, ElementsAre("inserted Project", "inserted ActivityRecord", "updated ActivityRecord",
                                   "updated ActivityRecord", "removed Project"));
    EXPECT_EQ(changes, 2);
}

TEST_F(ModelContextTest, AListenerMayFetchInsertAndSaveMeanwhile) {
    const auto project = insertProject(context, "Website");
    for (int i = 0; i < 20; ++i)
        aRecord().project(project).in(context);
    context.save();
    const auto records = context.fetch<Record>();
    int calls = 0;
    const auto subscription = context.didChange.subscribe([&](const EntityChange&) {
        if (++calls > 5) return;
        (void)context.fetch<AppSettings>();
        (void)context.fetch<Project>();
        context.insert(std::make_shared<AppSettings>());
        context.save();
    });
    context.remove(project);
    context.save();
    EXPECT_THAT(records, testing::Each(testing::Pointee(testing::ResultOf(
                             [](const Record& record) { return record.project() == nullptr; }, true))));
    store.reopen();
    EXPECT_EQ(store.context().count(refersToNone(&Record::project)), 20U);
}

TEST_F(ModelContextTest, ManyObjectsChangeInOneSave) {
    for (int i = 0; i < 20000; ++i)
        context.insert(std::make_shared<Record>());
    context.save();
    const auto records = context.fetch<Record>();
    for (const auto& record : records)
        record->confidence = 0.5;
    for (std::size_t i = 0; i < records.size(); i += 2)
        context.remove(records[i]);
    context.save();
    EXPECT_EQ(context.count(field(&Record::confidence) == 0.5), 10000U);
}

TEST_F(ModelContextTest, AScanReadsTheSavedRowsInOrderAndStopsWhenAsked) {
    const auto project = insertProject(context, "Website");
    aRecord().from("10:00:00").app("b").project(project).in(context);
    aRecord().from("09:00:00").to("09:10:00").app("a").in(context);
    aRecord().from("11:00:00").app("c").in(context);
    context.save();
    aRecord().from("08:00:00").app("unsaved").in(context);

    std::vector<std::string> rows;
    const auto note = [&](const Row& row) {
        rows.push_back(fmt::format("{} {} {}", row.text(0), row.isNull(1) ? "open" : "closed",
                                   row.isNull(2) ? 0 : row.integer(2)));
        return rows.size() < 2;
    };
    context.scan<Record>({.sort = {ascending(&Record::startTime)}}, {"app_name", "end_time", "project_id"}, note);
    EXPECT_THAT(rows, ElementsAre("a closed 0", fmt::format("b open {}", project->objectId())));

    rows.clear();
    context.scan<Record>(
        {.predicate = field(&Record::appName) != "b", .sort = {descending(&Record::startTime)}, .limit = 1},
        {"app_name", "end_time", "project_id"}, note);
    EXPECT_THAT(rows, ElementsAre("c open 0"));
}

TEST_F(ModelContextTest, AScanMayRunInsideAnotherAndEndWithAnException) {
    for (const char* app : {"a", "b", "c"})
        aRecord().app(app).in(context);
    context.save();
    int pairs = 0;
    const auto inner = [&](const Row&) { return ++pairs > 0; };
    context.scan<Record>({}, {"app_name"}, [&](const Row&) {
        context.scan<Record>({}, {"app_name"}, inner);  // the same statement, in use already
        return true;
    });
    EXPECT_EQ(pairs, 9);
    EXPECT_THROW(context.scan<Record>({}, {"app_name"}, [](const Row&) -> bool { throw std::runtime_error("enough"); }),
                 std::runtime_error);
    aRecord().in(context);
    context.save();  // no statement was left running
    EXPECT_EQ(context.count<Record>(), 4U);
}

}  // namespace
}  // namespace quorvane
