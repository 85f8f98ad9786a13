#include "store/ProjectTimeAnnotation.h"
#include "support/Matchers.h"
#include "support/Matching.h"
#include "support/TemporaryStore.h"

namespace quorvane {
namespace {

using Record = ActivityRecord;

class RelationshipTest : public testing::Test {
protected:
    TemporaryStore store;
    ModelContext& context = store.context();

    std::shared_ptr<ProjectTimeAnnotation> annotate(const std::shared_ptr<Project>& project, std::string_view start) {
        auto annotation = std::make_shared<ProjectTimeAnnotation>();
        annotation->startTime = at(start);
        annotation->project = project;
        context.insert(annotation);
        return annotation;
    }
};

TEST_F(RelationshipTest, AFreeProjectBecomesPartOfTheContextWithItsRecord) {
    const auto assigned = std::make_shared<Project>();
    aRecord().in(context)->project = assigned;
    const auto brought = std::make_shared<Project>();
    aRecord().project(brought).in(context);
    EXPECT_THAT(context.fetch<Project>(), ElementsAre(assigned, brought));
    context.save();
    store.reopen();
    EXPECT_EQ(store.context().count<Project>(), 2U);
    EXPECT_EQ(store.context().count(refersToNone(&Record::project)), 0U);
}

TEST_F(RelationshipTest, AProjectKnowsItsRecordsAndAnnotationsOldestFirst) {
    const auto project = insertProject(context, "Website");
    const auto other = insertProject(context, "Other");
    const auto late = aRecord().from("11:00:00").project(project).in(context);
    const auto early = aRecord().from("09:00:00").project(project).in(context);
    aRecord().project(other).in(context);
    const auto second = annotate(project, "10:00:00");
    const auto first = annotate(project, "08:00:00");
    for (const char* when : {"unsaved", "saved"}) {
        SCOPED_TRACE(when);
        EXPECT_THAT(project->activities(), ElementsAre(early, late));
        EXPECT_THAT(project->timeAnnotations(), ElementsAre(first, second));
        context.save();
    }
    EXPECT_THAT(std::make_shared<Project>()->activities(), IsEmpty());
}

TEST_F(RelationshipTest, RemovingAProjectLeavesItsRecordsAndAnnotationsWithoutOne) {
    const auto project = insertProject(context, "Website");
    const auto record = aRecord().app("loaded").project(project).in(context);
    aRecord().app("not loaded").project(project).in(context);
    const auto annotation = annotate(project, "09:00:00");
    context.save();
    const auto unsaved = aRecord().app("unsaved").project(project).in(context);

    context.remove(project);
    EXPECT_TRUE(project->isDeleted());
    EXPECT_THAT(project->activities(), IsEmpty());
    EXPECT_EQ(record->project(), nullptr);
    EXPECT_EQ(unsaved->project(), nullptr);
    EXPECT_EQ(annotation->project(), nullptr);
    for (const char* when : {"unsaved", "saved"}) {
        SCOPED_TRACE(when);
        EXPECT_EQ(context.count(refersToNone(&Record::project)), 3U);
        EXPECT_EQ(context.count(refersTo(&Record::project, *project)), 0U);
        context.save();
    }
    store.reopen();
    EXPECT_EQ(store.context().count(refersToNone(&Record::project)), 3U);
    EXPECT_EQ(store.context().count(refersToNone(&ProjectTimeAnnotation::project)), 1U);
}

TEST_F(RelationshipTest, NothingLeadsToARemovedProjectAnyMoreSavedOrNot) {
    for (const bool isSaved : {true, false}) {
        const auto project = insertProject(context, "Website");
        const auto prepared = aRecord().app("prepared").project(project).make();  // free, and leads there
        const auto record = aRecord().project(project).in(context);
        if (isSaved) context.save();
        context.remove(project);
        context.insert(prepared);
        EXPECT_EQ(record->project(), nullptr);
        record->project = project;
        EXPECT_EQ(prepared->project(), nullptr);
        EXPECT_EQ(record->project(), nullptr);
        context.save();
    }
    EXPECT_EQ(context.count(refersToNone(&Record::project)), 4U);
    EXPECT_EQ(context.count<Project>(), 0U);
}

TEST_F(RelationshipTest, APredicateOnAProjectHoldsBeforeAndAfterItsFirstSave) {
    const auto project = insertProject(context, "Website");
    const auto predicate = refersTo(&Record::project, *project);
    const auto record = aRecord().project(project).in(context);
    aRecord().in(context);
    EXPECT_THAT(context.fetch<Record>({.predicate = predicate}), ElementsAre(record));
    context.save();
    EXPECT_TRUE(predicate.matches(*record));
    record->project = project;  // no change
    EXPECT_FALSE(context.hasChanges());
    EXPECT_THAT(context.fetch<Record>({.predicate = predicate}), ElementsAre(record));
    context.remove(project);
    EXPECT_THAT(context.fetch<Record>({.predicate = predicate}), IsEmpty());
}

TEST_F(RelationshipTest, AProjectThatAnotherProgramRemovedIsStoredAsNone) {
    const auto project = insertProject(context, "Website");
    context.save();
    const auto other = store.anotherContext();
    other->remove(other->fetch<Project>().front());
    other->save();

    const auto record = aRecord().app("Editor").in(context);
    record->project = project;  // nobody has told us yet
    context.save();             // a save that failed here would fail forever
    EXPECT_THAT(context.fetch<Record>(), ElementsAre(record));
    EXPECT_EQ(record->project(), nullptr);
    record->project = project;
    context.save();
    EXPECT_EQ(other->count(refersToNone(&Record::project)), 1U);
}

}  // namespace
}  // namespace quorvane
