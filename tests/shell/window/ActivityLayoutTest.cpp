#include "shell/window/ActivityLayout.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <string>

namespace quorvane {
namespace {

/// Left edge and width of list, column and panel, "16+216 247+522 784+280".
std::string columns(const ActivityLayout& layout) {
    std::string text;
    for (const auto& column : {layout.legend, std::optional(layout.chart), layout.side})
        text += column ? fmt::format("{}+{} ", column->x(), column->width()) : "- ";
    return text;
}

TEST(ActivityLayoutTest, ColumnsComeWithTheWidthAndShareWhatIsLeft) {
    struct Row {
        const char* name;
        int width;
        bool hasProjectPanel;
        const char* columns;
        QRect praise;
    };
    const Row rows[] = {
        {"all three", 1080, false, "16+216 247+522 784+280 ", {784, 56, 280, 760}},
        {"the project panel is wider", 1080, true, "11+216 237+522 769+300 ", {}},
        {"what the gaps don't take goes outside", 2000, false, "442+250 724+522 1278+280 ", {1278, 56, 280, 760}},
        {"no list", 1000, false, "- 83+522 637+280 ", {637, 56, 280, 760}},
        {"the column alone, with room for the praise", 854, false, "- 16+522 - ", {554, 56, 284, 760}},
        {"the column alone, with room for a pop-up", 844, false, "- 16+522 - ", {16, 56, 522, 48}},
        {"the column alone, without", 640, false, "- 59+522 - ", {59, 56, 522, 48}},
        {"narrower than the column", 424, false, "- 0+424 - ", {0, 56, 424, 48}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto layout = activityLayout({row.width, 832}, TimelineViewMode::day, row.hasProjectPanel);
        EXPECT_EQ(columns(layout), row.columns);
        EXPECT_EQ(layout.praise.value_or(QRect()), row.praise);
        const int lineAbove = layout.isPraiseLine ? 52 : 0;
        EXPECT_EQ(layout.chart.top(), 56 + lineAbove);
        EXPECT_EQ(layout.chart.height(), 760 - lineAbove);
    }
}

TEST(ActivityLayoutTest, TheOverviewsHaveThePageToThemselves) {
    const auto layout = activityLayout({1080, 832}, TimelineViewMode::week, false);
    EXPECT_EQ(layout, (ActivityLayout{.header = {0, 0, 1080, 56}, .chart = {0, 56, 1080, 776}}));
}

TEST(ActivityLayoutTest, APopUpStaysBesideItsBlockAndOnThePage) {
    const QRect page(0, 0, 844, 640);
    const QRect column(16, 56, 522, 568);
    EXPECT_EQ(popUpBeside({66, 200, 460, 60}, {284, 180}, column, page), QRect(541, 200, 284, 180));
    EXPECT_EQ(popUpBeside({66, 600, 460, 10}, {284, 180}, column, page).bottom(), 623);
    EXPECT_EQ(popUpBeside({66, -50, 460, 60}, {284, 180}, column, page).top(), 56);
    const QRect narrow(0, 0, 500, 640);
    EXPECT_EQ(popUpBeside({50, 200, 400, 60}, {284, 180}, {0, 56, 500, 568}, narrow).right(), 495);
}

}  // namespace
}  // namespace quorvane
