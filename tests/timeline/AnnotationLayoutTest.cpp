#include "timeline/AnnotationLayout.h"

#include "support/Builders.h"
#include "support/Matching.h"
#include "timeline/TimelineProcessing.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

using Lines = std::vector<std::string>;

const Calendar utc("en_US", "UTC");

/// The project whose id begins with a letter from A to F; '-' is none.
std::shared_ptr<Project> project(char letter) {
    if (letter == '-') return nullptr;
    auto made = std::make_shared<Project>();
    made->id = *Uuid::parse(fmt::format("{}0000000-0000-4000-8000-000000000000", letter));
    made->name = std::string(1, letter);
    return made;
}

/// A project and the hours since a midnight.
struct Given {
    char project;
    double start;
    double end;
};

std::vector<std::shared_ptr<ProjectTimeAnnotation>> annotations(const std::vector<Given>& all, Date midnight) {
    std::vector<std::shared_ptr<ProjectTimeAnnotation>> made;
    for (const auto& given : all) {
        made.push_back(std::make_shared<ProjectTimeAnnotation>());
        made.back()->startTime = midnight + given.start * 1h;
        made.back()->endTime = midnight + given.end * 1h;
        made.back()->project = project(given.project);
    }
    return made;
}

/// "A 9-10.5 0/2": project, hours, column and columns.
Lines placed(const std::vector<Given>& all) {
    Lines lines;
    for (const auto& [annotation, column, columns] :
         placeProjectAnnotations(annotations(all, at("00:00:00")), at("12:00:00"), utc))
        lines.push_back(fmt::format("{} {}-{} {}/{}", annotation.project->name(), annotation.startHour,
                                    annotation.endHour, column, columns));
    return lines;
}

TEST(AnnotationLayoutTest, PutsProjectsThatOverlapSideBySide) {
    struct Row {
        const char* name;
        std::vector<Given> given;
        Lines expected;
    };
    const Row rows[] = {
        {"nothing", {}, {}},
        {"touching", {{'B', 9, 10}, {'A', 10, 11}}, {"B 9-10 0/1", "A 10-11 0/1"}},
        {"overlapping, by id", {{'B', 9, 10}, {'A', 9.75, 11}}, {"B 9-10 1/2", "A 9.75-11 0/2"}},
        {"one after the other, sorted",
         {{'C', 10.25, 11}, {'A', 9, 10}, {'B', 9.5, 10.5}},
         {"A 9-10 0/3", "B 9.5-10.5 1/3", "C 10.25-11 2/3"}},
        {"a long one holds the group together",
         {{'A', 9, 12}, {'B', 9.25, 9.5}, {'B', 11, 12.5}},
         {"A 9-12 0/2", "B 9.25-9.5 1/2", "B 11-12.5 1/2"}},
        {"one project in one column", {{'A', 9, 10}, {'A', 9.5, 10.5}}, {"A 9-10 0/1", "A 9.5-10.5 0/1"}},
        {"six projects",
         {{'F', 9, 10}, {'E', 9, 10}, {'D', 9, 10}, {'C', 9, 10}, {'B', 9, 10}, {'A', 9, 10}},
         {"F 9-10 4/5", "E 9-10 4/5", "D 9-10 3/5", "C 9-10 2/5", "B 9-10 1/5", "A 9-10 0/5"}},
        {"only those that begin on the day",
         {{'A', -1, 1}, {'B', 0, 0.5}, {'C', 23, 25}, {'D', 24, 25}},
         {"B 0-0.5 0/1", "C 23-25 0/1"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(placed(row.given), row.expected);
    }
}

TEST(AnnotationLayoutTest, ABarStandsWhereABlockOfItsTimesDoesWhenClocksChange) {
    const Calendar newYork("en_US", "America/New_York");
    const Date midnight = at("2026-03-08T05:00:00Z");
    const auto bar = placeProjectAnnotations(annotations({{'A', 1.5, 8}}, midnight), midnight, newYork)[0].annotation;
    const auto block = TimelineProcessing::placeSnapshots({{.startTime = midnight + 1.5h, .endTime = midnight + 8h}},
                                                          midnight, newYork)[0];
    EXPECT_EQ(bar.endHour, 9);
    EXPECT_EQ((std::pair{bar.startHour, bar.endHour}), (std::pair{block.startHour, block.endHour}));
}

TEST(AnnotationLayoutTest, GivesAnAnnotationWithoutAProjectAColumnThatStays) {
    const auto given = annotations({{'-', 9, 10}, {'-', 9, 10}}, at("00:00:00"));
    const auto first = placeProjectAnnotations(given, at("12:00:00"), utc);
    const auto again = placeProjectAnnotations(given, at("12:00:00"), utc);
    ASSERT_EQ(first.size(), 2U);
    EXPECT_EQ(first[0].columnIndex + first[1].columnIndex, 1);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(first[i].columnIndex, again[i].columnIndex);
        EXPECT_EQ(first[i].annotation.dbAnnotation, given[i]);
        EXPECT_EQ(first[i].annotation.project->color(), std::nullopt);
        EXPECT_EQ(given[i]->project(), nullptr);
    }
}

TEST(AnnotationLayoutTest, FramesBarsByTheirHoursWhateverIsCollapsed) {
    const auto frame = [](double hours, int columnIndex, int totalColumns) {
        return barFrame({{.startHour = 9, .endHour = 9 + hours}, columnIndex, totalColumns}, 180, 550, 100);
    };
    EXPECT_EQ(frame(1, 0, 1), (BarFrame{.x = 275, .y = 190, .width = 246, .height = 180}));
    EXPECT_EQ(frame(0.5, 1, 2), (BarFrame{.x = 337.5, .y = 145, .width = 121, .height = 90}));
    EXPECT_EQ(frame(2, 4, 5), (BarFrame{.x = 375, .y = 280, .width = 46, .height = 360}));
    EXPECT_EQ(frame(0.05, 0, 1), (BarFrame{.x = 275, .y = 105, .width = 246, .height = 10}));
    EXPECT_EQ(frame(-1, 0, 0), (BarFrame{.x = 275, .y = 105, .width = 246, .height = 10}));
}

}  // namespace
}  // namespace quorvane
