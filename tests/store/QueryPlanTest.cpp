#include "store/ProjectTimeAnnotation.h"
#include "store/SqlTrace.h"
#include "support/Builders.h"
#include "support/Matching.h"
#include "support/TemporaryStore.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <functional>

namespace quorvane {
namespace {

using Record = ActivityRecord;
using Annotation = ProjectTimeAnnotation;

/// What a question costs does not depend on the length of the history: the database finds its rows by an index.
class QueryPlanTest : public testing::Test {
protected:
    void SetUp() override {
        project = insertProject(context, "Website");
        for (int i = 0; i < 2000; ++i) {
            const auto record = std::make_shared<Record>();
            record->startTime = start + i * 60s;
            record->endTime = start + i * 60s + 60s;
            if (i % 3 == 0) record->project = project;
            context.insert(record);
        }
        context.save();
    }

    template <class E = Record>
    static std::function<void(ModelContext&)> fetching(const FetchDescriptor<E>& descriptor) {
        return [descriptor](ModelContext& c) { (void)c.fetch<E>(descriptor); };
    }
    static std::function<void(ModelContext&)> scanning(const FetchDescriptor<Record>& descriptor, const char* column) {
        return [=](ModelContext& c) { c.scan<Record>(descriptor, {column}, [](const Row&) { return true; }); };
    }
    /// How the database means to run these statements, step by step.
    std::vector<std::string> stepsOf(const std::vector<std::string>& statements) {
        SQLite::Database database(store.file().string(), SQLite::OPEN_READONLY);
        std::vector<std::string> steps;
        for (const std::string& sql : statements) {
            SQLite::Statement statement(database, "EXPLAIN QUERY PLAN " + sql);
            while (statement.executeStep())
                steps.push_back(statement.getColumn("detail").getString());
        }
        return steps;
    }
    std::vector<std::string> planOf(const std::function<void(ModelContext&)>& ask) {
        trace.clear();
        ask(context);
        return stepsOf(trace.statements("SELECT"));
    }

    SqlTrace trace;
    TemporaryStore store;
    ModelContext& context = store.context();
    std::shared_ptr<Project> project;
    const Date start = at("00:00:00");
};

TEST_F(QueryPlanTest, QuestionsAboutARangeUseAnIndex) {
    const Date from = start + 1000 * 60s;
    const Date to = from + 600s;
    const auto started = field(&Record::startTime);
    const auto ended = field(&Record::endTime);
    const auto inRange = started >= from && started < to;
    const auto oldestFirst = ascending(&Record::startTime);
    const std::string search = "SEARCH activity_record USING INDEX activity_record_by_";
    const std::tuple<const char*, std::function<void(ModelContext&)>, std::string> rows[] = {
        {"records that start in a range, oldest first", fetching({.predicate = inRange, .sort = {oldestFirst}}),
         search + "start_time (start_time>? AND start_time<?)"},
        {"the same, newest first and to its end",
         fetching({.predicate = started >= from, .sort = {descending(&Record::startTime)}}),
         search + "start_time (start_time>?)"},
        {"how many they are", [&](ModelContext& c) { (void)c.count(inRange); },
         "SEARCH activity_record USING COVERING INDEX activity_record_by_start_time (start_time>? AND start_time<?)"},
        {"records that end after an instant and began before another",
         fetching({.predicate = ended > from && started.unindexed() < to,
                   .sort = {ascending(&Record::endTime)},
                   .limit = 2}),
         search + "end_time (end_time>?)"},
        {"open records", fetching({.predicate = ended.isNone(), .sort = {oldestFirst}}),
         search + "end_time (end_time=?)"},
        {"records of a project", [&](ModelContext&) { (void)project->activities(); },
         search + "project_and_start_time (project=?)"},
        {"records of a project in a range",
         fetching({.predicate = refersTo(&Record::project, *project) && started >= from && started < to}),
         search + "project_and_start_time (project=? AND start_time>? AND start_time<?)"},
        {"the record with an identifier", fetching({.predicate = field(&Record::id) == Uuid::random()}),
         search + "id (id=?)"},
        {"records that the cloud has not, newest first",
         scanning({.predicate = field(&Record::cloudKitRecordID).isNone(), .sort = {descending(&Record::startTime)}},
                  "pk"),
         "SEARCH activity_record USING COVERING INDEX activity_record_by_cloud_kit_record_id_and_start_time "
         "(cloud_kit_record_id=?)"},
        {"annotations that end after an instant and began before another",
         fetching<Annotation>(
             {.predicate = field(&Annotation::endTime) > from && field(&Annotation::startTime).unindexed() <= to}),
         "SEARCH project_time_annotation USING INDEX project_time_annotation_by_end_time (end_time>?)"},
        {"a project by its row", [&](ModelContext& c) { (void)c.object(Project::description(), 12345); },
         "SEARCH project USING INTEGER PRIMARY KEY (rowid=?)"}};
    for (const auto& [name, ask, expected] : rows) {
        SCOPED_TRACE(name);
        const auto plan = planOf(ask);
        EXPECT_THAT(plan, Contains(expected));
        EXPECT_THAT(plan, Each(Not(HasSubstr("SCAN"))));
    }
}

TEST_F(QueryPlanTest, AWalkAlongAnIndexSortsNothing) {
    const auto started = field(&Record::startTime);
    for (const SortOrder& order : {ascending(&Record::startTime), descending(&Record::startTime)}) {
        SCOPED_TRACE(order.isAscending ? "oldest first" : "newest first");
        // "FOR RIGHT PART" sorts the few that start at one instant.
        EXPECT_THAT(planOf(fetching({.sort = {order}, .limit = 1})),
                    Each(AllOf(Not(HasSubstr("FOR ORDER BY")), Not(testing::StrEq("SCAN activity_record")))));
        EXPECT_THAT(planOf(scanning({.predicate = started >= start, .sort = {order}}, "id")),
                    Each(Not(HasSubstr("FOR ORDER BY"))));
    }
}

TEST_F(QueryPlanTest, AnUpdateAndARemovalFindTheirRowsByKey) {
    const auto record = context.fetch<Record>({.limit = 1}).front();
    record->endTime = start;
    context.remove(project);
    trace.clear();
    context.save();
    for (const char* word : {"UPDATE", "DELETE"}) {
        ASSERT_FALSE(trace.statements(word).empty());
        EXPECT_THAT(stepsOf(trace.statements(word)), Each(Not(HasSubstr("SCAN"))));
    }
}

}  // namespace
}  // namespace quorvane
