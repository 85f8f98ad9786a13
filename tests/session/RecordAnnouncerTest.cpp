#include "session/RecordAnnouncer.h"

#include "support/Builders.h"
#include "support/TemporaryStore.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace quorvane {
namespace {

class RecordAnnouncerTest : public testing::Test {
protected:
    ModelContext& context() { return store_.context(); }

    TemporaryStore store_;
    std::vector<std::string> lines_;
    RecordAnnouncer announcer_{store_.context(), [this](const std::string& line) { lines_.push_back(line); }};
};

TEST_F(RecordAnnouncerTest, TellsOfEachRecordThatOpensAndCloses) {
    const auto record = aRecord().from("09:00:00").app("XTerm").title("make\n\x1b[2J").in(context());
    context().save();
    record->windowTitle = "another title";
    record->endTime = at("09:01:10.5");
    record->updatedAt = at("09:01:10.5");
    context().save();
    EXPECT_THAT(lines_, ElementsAre("09:00:00  opened  XTerm — make  [2J", "09:01:10  closed  XTerm  0:01:10"));
}

TEST_F(RecordAnnouncerTest, LeavesTitlesOutWhereTheyWouldBeKept) {
    std::vector<std::string> lines;
    const RecordAnnouncer discreet(
        context(), [&](const std::string& line) { lines.push_back(line); }, RecordAnnouncer::Titles::leftOut);
    aRecord().from("09:00:00").app("XTerm").title("secret").in(context());
    context().save();
    EXPECT_THAT(lines, ElementsAre("09:00:00  opened  XTerm"));
}

TEST_F(RecordAnnouncerTest, SaysNothingOfTheEndOfRecordsThatItDidNotSeeOpenOrThatAreRemoved) {
    aRecord().from("09:00:00").to("09:10:00").app("Imported").in(context());
    context().save();
    const auto another = store_.anotherContext();
    aRecord().from("10:00:00").app("Elsewhere").in(*another);
    another->save();
    for (const auto& record : context().fetch<ActivityRecord>())
        record->endTime = at("11:00:00");
    EXPECT_THAT(lines_, IsEmpty());
    const auto removed = aRecord().from("09:00:00").app("XTerm").in(context());
    context().save();
    context().remove(removed);
    context().save();
    EXPECT_THAT(lines_, ElementsAre("09:00:00  opened  XTerm"));
}

}  // namespace
}  // namespace quorvane
