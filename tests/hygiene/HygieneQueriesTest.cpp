#include "hygiene/HygieneTest.h"
#include "hygiene/RandomHistory.h"
#include "store/DataCleanupService.h"
#include "store/OverlapDetectionService.h"
#include "store/SqlTrace.h"

#include <tuple>

namespace quorvane {
namespace {

/// The traced statements of a history's store, and how the database goes about them.
class HygieneQueriesTest : public HygieneTest {
protected:
    HygieneQueriesTest() {
        store.reopen();  // so that the trace hears its connection
        for (const auto& record : randomHistory(1, runLoop.now()))
            context().insert(record);
        context().save();
        trace_.clear();
    }

    /// "SELECT ...: SEARCH activity_record USING INDEX ...", for each statement that reads records since the last call.
    std::vector<std::string> plans() {
        const auto statements = trace_.statements("SELECT");
        Database database({.file = store.file()});
        std::vector<std::string> found;
        for (std::string statement : statements) {
            if (statement.find("FROM activity_record") == std::string::npos) continue;
            // The services leave the limit open, and a plan for a known small one would be another.
            if (const auto limit = statement.find(" LIMIT "); limit != std::string::npos)
                statement = statement.substr(0, limit) + " LIMIT ?";
            std::string plan = statement + ":";
            database.query("EXPLAIN QUERY PLAN " + statement, {}, [&](const Row& row) {
                plan += ' ' + std::string(row.text(3));
                return true;
            });
            found.push_back(plan);
        }
        trace_.clear();
        return found;
    }

private:
    SqlTrace trace_;
};

TEST_F(HygieneQueriesTest, ABackgroundRunDoesNotWalkTheHistory) {
    DataCleanupService service(context(), runLoop, console);
    service.performBackgroundCleanup();
    runLoop.runPosted();
    service.endAllActiveRecords();
    const auto found = plans();
    EXPECT_GE(found.size(), 7);
    for (const std::string& plan : found)
        EXPECT_THAT(plan, Not(HasSubstr("SCAN")));
}

TEST_F(HygieneQueriesTest, TheQuestionsOfTheTrackerDoNotWalkTheHistory) {
    OverlapDetectionService service(context(), runLoop, console);
    const auto excluded = aRecord().make();
    std::ignore = service.hasOverlap(runLoop.now() - 1h, runLoop.now());
    std::ignore = service.hasOverlap(runLoop.now() - 1h, runLoop.now(), excluded.get());
    std::ignore = service.suggestedEndTime(runLoop.now() - 1h);
    service.detectAndResolveOverlaps(runLoop.now());
    const auto found = plans();
    EXPECT_GE(found.size(), 7);
    for (const std::string& plan : found) {
        EXPECT_THAT(plan, Not(HasSubstr("SCAN")));
        // Of the two ends of a range the earlier one would choose nearly everything.
        EXPECT_THAT(plan, Not(HasSubstr("(start_time<")));
    }
}

TEST_F(HygieneQueriesTest, TheCheckOfAllRecordsReadsThemInTheOrderOfAnIndex) {
    OverlapDetectionService(context(), runLoop, console, 10).detectAndResolveOverlaps();
    runLoop.runPosted();
    const auto found = plans();
    EXPECT_GE(found.size(), 10);
    for (const std::string& plan : found)
        EXPECT_THAT(plan, AnyOf(HasSubstr("end_time IS NULL"), Not(HasSubstr("TEMP B-TREE"))));
}

}  // namespace
}  // namespace quorvane
