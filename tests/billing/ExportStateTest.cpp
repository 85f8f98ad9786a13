#include "billing/ExportState.h"

#include "base/AtomicFile.h"
#include "billing/TextDocuments.h"
#include "support/StoreTest.h"
#include "support/TemporaryFolder.h"

namespace quorvane {
namespace {

class ExportStateTest : public StoreTest {
protected:
    ExportStateTest() : StoreTest("2026-03-10 12:00:00") {}

    ExportState open() { return {store.container(), runLoop, localization, console}; }
    /// Plays until the save is through.
    void save(ExportState& state, const std::filesystem::path& file) {
        bool isFinished = false;
        const auto subscription = state.finished.subscribe([&] { isFinished = true; });
        state.save(file);
        for (int i = 0; i < 1000 && !isFinished; ++i)
            runLoop.playFor(0.01s);
        ASSERT_TRUE(isFinished);
    }

    TemporaryFolder folder;
};

TEST_F(ExportStateTest, HoldsSevenDaysAtFirstAndNeverReachesBackMoreThanAYear) {
    auto state = open();
    EXPECT_EQ(state.selection().start, at("2026-03-03 12:00:00"));
    EXPECT_EQ(state.selection().end, at("2026-03-10 12:00:00"));
    runLoop.playFor(60s);
    state.startDate = at("2020-01-01 00:00:00");
    EXPECT_EQ(state.selection().start, at("2026-03-10 12:00:00") - 31'536'000s);  // of when it was opened
    EXPECT_EQ(state.defaultFileName(), "Quorvane_Activities_2026-03-10_12-01-00.csv");
}

TEST_F(ExportStateTest, ListsProjectsByNameAndCountsWhatIsSelected) {
    std::vector<std::shared_ptr<Project>> projects;
    for (const char* name : {"Zoo", "Äpfel", "item 10", "Apfel", "item 9"})
        projects.push_back(insertProject(context(), name));
    aRecord().from("2026-03-09 09:00:00").in(context());
    aRecord().from("2026-03-09 10:00:00").project(projects[0]).in(context());
    aRecord().from("2026-03-10 12:00:00").project(projects[1]).in(context());
    aRecord().from("2026-03-10 12:00:01").project(projects[1]).in(context());
    auto state = open();
    std::vector<std::string> names;
    for (const auto& project : state.projects())
        names.push_back(project->name());
    EXPECT_THAT(names, ElementsAre("Apfel", "Äpfel", "item 9", "item 10", "Zoo"));
    EXPECT_EQ(state.recordCount(), 3);
    for (const auto& [toggled, selected, records] : {std::tuple(1U, 1U, 1U), {0, 2, 2}, {0, 1, 1}}) {
        state.toggle(projects[toggled]->id());
        EXPECT_EQ(state.selectedProjectCount(), selected);
        EXPECT_EQ(state.recordCount(), records);
    }
    EXPECT_FALSE(state.isSelected(projects[0]->id()));
}

TEST_F(ExportStateTest, SavesWhatIsSelectedNewestFirstWithProgress) {
    const auto project = insertProject(context(), "Web");
    std::vector<std::shared_ptr<ActivityRecord>> expected;
    for (const char* start : {"2026-03-10 09:00:00", "2026-03-09 09:00:00"})
        expected.push_back(aRecord().from(start).app("Editor").project(project).in(context()));
    aRecord().from("2026-03-09 10:00:00").app("Editor").in(context());
    auto state = open();
    state.toggle(project->id());
    state.beginExport();
    EXPECT_TRUE(state.isExporting());
    std::size_t written = 0;
    const auto subscription = state.progressed.subscribe([&](std::size_t records) { written = records; });
    save(state, folder / "out.csv");
    EXPECT_EQ(contentOf(folder / "out.csv"), CSVExporter::makeCSV(expected));
    EXPECT_EQ(written, 2);
    EXPECT_FALSE(state.isExporting());
    EXPECT_EQ(state.exportURL(), folder / "out.csv");
    EXPECT_THAT(console.lines(), ElementsAre());
}

TEST_F(ExportStateTest, AFailedSaveIsPrintedAndLeavesNothing) {
    auto state = open();
    state.beginExport();
    save(state, folder / "missing" / "out.csv");
    EXPECT_FALSE(state.isExporting());
    EXPECT_EQ(state.exportURL(), std::nullopt);
    EXPECT_THAT(console.lines(), ElementsAre(AllOf(StartsWith("Export failed: "), HasSubstr("out.csv"))));
}

TEST_F(ExportStateTest, MayGoWhileItsFileIsWritten) {
    {
        auto state = open();
        state.save(folder / "out.csv");
    }
    for (int i = 0; i < 1000 && !std::filesystem::exists(folder / "out.csv"); ++i)
        runLoop.playFor(0.01s);
    EXPECT_EQ(contentOf(folder / "out.csv"), CSVExporter::makeCSV({}));
}

TEST(TextDocumentsTest, ReadUtf8AndTellDamage) {
    EXPECT_EQ(CSVDocument::read("id,标题\n").bytes(), "id,标题\n");
    for (const std::optional<std::string>& damaged : {std::optional<std::string>(), {""}, {"a\xff"}, {"\xe4\xbd"}})
        EXPECT_THROW(static_cast<void>(CSVDocument::read(damaged)), FileError);
    EXPECT_EQ(BillingMarkdownDocument::read("# 账单").bytes(), "# 账单");
}

}  // namespace
}  // namespace quorvane
