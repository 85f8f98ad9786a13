#include "store/ModelContext.h"

#include "store/AppSettings.h"
#include "store/SqlTrace.h"
#include "support/Matchers.h"
#include "support/Matching.h"
#include "support/TemporaryStore.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

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
};

TEST_F(ModelContextTest, ARowHasOneObjectWhileSomebodyHoldsItAndKeepsItsChangesAnyway) {
    auto record = insertAndSave(aRecord().app("Editor"));
    EXPECT_THAT(context.fetch<Record>(), ElementsAre(record));
    EXPECT_EQ(context.object(Record::description(), record->objectId()), record);
    EXPECT_THAT(context.fetch<Record>({.predicate = field(&Record::id) == record->id()}), ElementsAre(record));
    record.reset();
    context.fetch<Record>().front()->appName = "Browser";
    EXPECT_EQ(context.fetch<Record>().front()->context(), &context);
    context.save();
    store.reopen();
    const auto again = store.context().fetch<Record>();
    ASSERT_THAT(again, ElementsAre(isRecord("Browser", "09:00:00")));
    // A column that holds numbers takes what is none.
    again.front()->confidence = std::numeric_limits<double>::quiet_NaN();
    store.context().save();
    EXPECT_EQ(store.anotherContext()->fetch<Record>().front()->confidence(), 0.0);
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
    fresh.save();
    EXPECT_THAT(fresh.fetch<Record>(), IsEmpty());
    EXPECT_FALSE(fresh.hasChanges());
}

TEST_F(ModelContextTest, AnObjectMayOutliveItsContext) {
    const auto record = insertAndSave(aRecord().app("Editor"));
    const auto unsaved = aRecord().app("Browser").in(context);
    store.close();
    for (const auto& orphan : {record, unsaved}) {
        EXPECT_EQ(orphan->context(), nullptr);
        orphan->appName = "changed";
        EXPECT_EQ(orphan->appName(), "changed");
        EXPECT_FALSE(orphan->isDeleted());
        EXPECT_EQ(orphan->project(), nullptr);
    }
    store.reopen();
    store.context().insert(record);  // its row is in the store already
    store.context().save();
    EXPECT_THAT(store.context().fetch<Record>(), ElementsAre(isRecord("Editor", "09:00:00")));
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
    store.reopen();
    EXPECT_EQ(store.context().count(refersToNone(&Record::project)), 20U);
}

TEST_F(ModelContextTest, ManyObjectsChangeInOneSave) {
    for (int i = 0; i < 20000; ++i)
        context.insert(std::make_shared<Record>());
    context.save();
    bool isToGo = false;
    for (const auto& record : context.fetch<Record>()) {
        record->confidence = 0.5;
        if (isToGo = !isToGo; isToGo) context.remove(record);
    }
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
    const auto scanned = [&](const FetchDescriptor<Record>& descriptor) {
        std::vector<std::string> rows;
        context.scan<Record>(descriptor, {"app_name", "end_time", "project_id"}, [&](const Row& row) {
            rows.push_back(fmt::format("{} {} {}", row.text(0), row.isNull(1) ? "open" : "closed",
                                       row.isNull(2) ? 0 : row.integer(2)));
            return rows.size() < 2;
        });
        return rows;
    };
    EXPECT_THAT(scanned({.sort = {ascending(&Record::startTime)}}),
                ElementsAre("a closed 0", fmt::format("b open {}", project->objectId())));
    EXPECT_THAT(
        scanned({.predicate = field(&Record::appName) != "b", .sort = {descending(&Record::startTime)}, .limit = 1}),
        ElementsAre("c open 0"));
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
