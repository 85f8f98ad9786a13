#include "store/LiveQuery.h"
#include "store/ModelContext.h"
#include "support/Matchers.h"
#include "support/Matching.h"
#include "support/OtherProcess.h"
#include "support/TemporaryStore.h"

namespace quorvane {
namespace {

using Record = ActivityRecord;

/// Two connections to one file, as the application and the companion command have them.
class SharedFileTest : public testing::Test {
protected:
    TemporaryStore store;
    ModelContext& context = store.context();
    std::unique_ptr<ModelContext> other = store.anotherContext();

    std::shared_ptr<Record> insertAndSave(const RecordBuilder& builder) {
        auto record = builder.in(context);
        context.save();
        return record;
    }
    std::shared_ptr<Record> othersCopy(const std::shared_ptr<Record>& record) {
        return other->fetch<Record>({.predicate = field(&Record::id) == record->id()}).front();
    }
};

TEST_F(SharedFileTest, TheNextFetchSeesWhatAnotherSavedAndRefreshesLiveObjects) {
    const auto record = insertAndSave(aRecord().app("Editor"));
    const auto untouched = insertAndSave(aRecord().app("Browser"));
    EXPECT_FALSE(context.hasForeignChanges());
    othersCopy(record)->windowTitle = "theirs";
    const auto project = insertProject(*other, "Website");
    othersCopy(record)->project = project;
    EXPECT_THAT(context.fetch<Record>(), SizeIs(2));
    EXPECT_FALSE(context.hasForeignChanges());
    other->save();
    EXPECT_TRUE(context.hasForeignChanges());
    EXPECT_FALSE(context.hasForeignChanges());

    std::vector<std::shared_ptr<Entity>> told;
    const auto first = record->changed.subscribe([&] { told.push_back(record); });
    const auto second = untouched->changed.subscribe([&] { told.push_back(untouched); });
    const auto third = context.didChange.subscribe([&](const EntityChange& change) { told.push_back(change.entity); });
    (void)context.fetch<Record>();
    EXPECT_EQ(record->windowTitle(), "theirs");
    EXPECT_EQ(record->project()->name(), "Website");
    EXPECT_THAT(told, ElementsAre(record, record));
    EXPECT_FALSE(context.hasChanges());
}

TEST_F(SharedFileTest, OwnChangesWinOverWhatAnotherSavedAttributeByAttribute) {
    const auto record = insertAndSave(aRecord().app("Editor").title("old"));
    record->windowTitle = "ours";
    const auto theirs = othersCopy(record);
    theirs->windowTitle = "theirs";
    theirs->tags = "theirs";
    other->save();
    (void)context.fetch<Record>();
    context.save();
    (void)context.fetch<Record>();
    EXPECT_EQ(record->windowTitle(), "ours");
    EXPECT_EQ(record->tags(), "theirs");
}

TEST_F(SharedFileTest, AnUpdateOrARemovalOfARowThatAnotherRemovedHitsNoOther) {
    const auto removedByBoth = insertAndSave(aRecord());
    const auto record = insertAndSave(aRecord().app("Editor"));
    const std::int64_t row = record->objectId();
    for (const auto& theirs : other->fetch<Record>())
        other->remove(theirs);
    other->save();
    aRecord().app("newcomer").in(*other);
    other->save();

    context.remove(removedByBoth);
    record->appName = "changed";
    const auto inserted = aRecord().app("ours").in(context);
    std::vector<EntityChange::Kind> told;
    const auto subscription =
        context.didChange.subscribe([&](const EntityChange& change) { told.push_back(change.kind); });
    context.save();
    EXPECT_TRUE(record->isDeleted());
    EXPECT_EQ(record->appName(), "changed");
    EXPECT_EQ(record->context(), nullptr);
    EXPECT_THAT(told, ElementsAre(EntityChange::Kind::removed));
    EXPECT_EQ(context.object(Record::description(), row), nullptr);
    EXPECT_THAT(context.fetch<Record>(), ElementsAre(isRecord("newcomer", "09:00:00"), isRecord("ours", "09:00:00")));
    EXPECT_FALSE(context.hasChanges());
}

TEST_F(SharedFileTest, ALiveQueryLearnsOfForeignRowsWhenItIsRefreshed) {
    const auto moved = insertAndSave(aRecord().from("09:00:00").app("moved"));
    const auto gone = insertAndSave(aRecord().from("10:00:00").app("gone"));
    const auto leaving = insertAndSave(aRecord().from("11:00:00").app("leaving"));
    LiveQuery<Record> query(
        context, {.predicate = field(&Record::startTime) < at("20:00:00"), .sort = {ascending(&Record::startTime)}});
    othersCopy(moved)->startTime = at("15:00:00");
    othersCopy(leaving)->startTime = at("21:00:00");
    other->remove(othersCopy(gone));
    aRecord().from("12:00:00").app("came").in(*other);
    other->save();

    std::vector<std::string> told;
    const auto subscription = query.didChange.subscribe([&](const QueryChange<Record>& change) {
        for (const auto& [what, records] :
             {std::pair("+", change.inserted), {"-", change.removed}, {"~", change.updated}})
            for (const auto& record : records)
                told.push_back(what + record->appName().value_or(""));
    });
    query.refresh();
    EXPECT_THAT(query.results(), ElementsAre(isRecord("came", "12:00:00"), isRecord("moved", "15:00:00")));
    EXPECT_THAT(told, UnorderedElementsAre("+came", "~moved", "-gone", "-leaving"));
}

TEST_F(SharedFileTest, AFurtherContextLeavesTheLocksOfTheFirstAlone) {
    insertAndSave(aRecord().app("Editor"));
    other.reset();
    (void)store.anotherContext()->count<Record>();
    // Another program that closes the file as its last user would take the log away from under the application.
    inOtherProcess([&] { (void)ModelContainer({.file = store.file()}).mainContext().count<Record>(); });
    EXPECT_TRUE(std::filesystem::exists(store.file().string() + "-wal"));
    insertAndSave(aRecord().app("Browser"));
    EXPECT_EQ(inOtherProcess(
                  [&] { return std::to_string(ModelContainer({.file = store.file()}).mainContext().count<Record>()); }),
              "2");
}

TEST_F(SharedFileTest, TwoProgramsMayMakeTheStoreAtTheSameTime) {
    for (int round = 0; round < 20; ++round) {
        const TemporaryFolder folder;
        const auto open = [&] {
            try {
                ModelContainer container({.file = folder / "new" / "store.sqlite"});
                aRecord().in(container.mainContext());
                container.mainContext().save();
                return std::string("saved");
            } catch (const StoreError& error) {
                return std::string(error.what());
            }
        };
        OtherProcess a(open);
        OtherProcess b(open);
        OtherProcess c(open);
        for (OtherProcess* one : {&a, &b, &c})
            EXPECT_EQ(one->wait(), "saved");
        EXPECT_EQ(ModelContainer({.file = folder / "new" / "store.sqlite"}).mainContext().count<Record>(), 3U);
    }
}

}  // namespace
}  // namespace quorvane
