#include "timeline/AnnotationAssignment.h"

#include "platform/Clock.h"
#include "support/Builders.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"
#include "support/TemporaryStore.h"
#include "timeline/ProjectSelectorState.h"

namespace quorvane {
namespace {

class AnnotationAssignmentTest : public testing::Test {
protected:
    AssignmentOutcome assign(const std::shared_ptr<Project>& project, double from, double to) {
        return createAnnotation(store.context(), project, chosenRange({from, to}, at("12:00:00")), console);
    }
    std::shared_ptr<Project> project(const char* name) { return insertProject(store.context(), name); }

    TemporaryStore store;
    RecordingConsole console;
};

TEST_F(AnnotationAssignmentTest, AProjectGetsNoTimeTwiceAndAMomentThreeProjects) {
    using enum AssignmentOutcome;
    const auto a = project("A");
    const auto b = project("B");
    const auto c = project("C");
    const auto d = project("D");
    EXPECT_EQ(assign(a, 9, 10), saved);
    EXPECT_EQ(assign(a, 9.5, 11), alreadyAssigned);
    EXPECT_EQ(assign(a, 10, 11), saved);  // touching is no overlap
    EXPECT_EQ(assign(b, 9.9, 10.1), saved);
    EXPECT_EQ(assign(c, 9, 10), saved);
    EXPECT_EQ(assign(d, 9.95, 10), tooManyProjects);
    EXPECT_EQ(assign(d, 9, 9.5), saved);
    EXPECT_EQ(assign(d, 10.1, 11), saved);
    EXPECT_THAT(console.lines(),
                ElementsAre("ProjectTimeAnnotation saved: A from 09:00 to 10:00", "该时间段已经标注给项目: A",
                            "ProjectTimeAnnotation saved: A from 10:00 to 11:00",
                            "ProjectTimeAnnotation saved: B from 09:54 to 10:06",
                            "ProjectTimeAnnotation saved: C from 09:00 to 10:00",
                            "该时间段已达到最大项目数量限制（3个）",
                            "ProjectTimeAnnotation saved: D from 09:00 to 09:30",
                            "ProjectTimeAnnotation saved: D from 10:06 to 11:00"));
    EXPECT_EQ(store.anotherContext()->count<ProjectTimeAnnotation>(), 6);
}

TEST_F(AnnotationAssignmentTest, TimeThatBelongsToNoProjectAnyMoreStandsInNobodysWay) {
    const auto gone = project("Gone");
    ASSERT_EQ(assign(gone, 9, 10), AssignmentOutcome::saved);
    store.context().remove(gone);
    for (const char* name : {"A", "B", "C"})
        EXPECT_EQ(assign(project(name), 9, 10), AssignmentOutcome::saved);
}

TEST_F(AnnotationAssignmentTest, ThePanelHidesProjectsThatHaveTheTimeAndChecksNewNames) {
    const auto web = project("Web");
    const auto app = project("Äpp");
    ASSERT_EQ(assign(web, 9, 10), AssignmentOutcome::saved);
    const TimeRange range{9.5, 11};
    ProjectSelectorState panel(range, {web, app},
                               annotationsOverlapping(store.context(), chosenRange(range, at("12:00:00")).instants));
    EXPECT_THAT(panel.projects(), ElementsAre(app));
    EXPECT_EQ(panel.hiddenCount(), 1);
    struct Row {
        const char* name;
        std::optional<TextKey> error;
        bool canCreate;
    };
    const Row rows[] = {{"", {}, false},
                        {" \n", TextKey("project_name_empty"), false},
                        {" WEB ", TextKey("project_name_taken"), false},
                        {"äpp", TextKey("project_name_taken"), false},
                        {"New", {}, true},
                        {"", {}, false}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        panel.setNewProjectName(row.name);
        EXPECT_EQ(panel.nameError(), row.error);
        EXPECT_EQ(panel.canCreate(), row.canCreate);
    }
}

}  // namespace
}  // namespace quorvane
