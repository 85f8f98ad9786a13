#include "base/Calendar.h"
#include "base/Iso8601.h"
#include "base/Json.h"
#include "cli/Arguments.h"
#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/DayDrawing.h"
#include "cli/Output.h"
#include "platform/Clock.h"
#include "store/ModelContext.h"
#include "timeline/AnnotationAssignment.h"
#include "timeline/AnnotationLayout.h"
#include "timeline/DayTimelineGeometry.h"
#include "timeline/TimelineProcessing.h"
#include "timeline/TimelineRecordSnapshot.h"

#include <CLI/CLI.hpp>
#include <numeric>

namespace quorvane::cli {
namespace {

/// As wide as the hour column likes to be.
constexpr double preferredWidth = 510;

struct TimelineOptions {
    std::optional<CivilDate> day;
    double hourHeight = HourLayout::defaultHourHeight;
    std::optional<double> width;
    std::optional<ChartPoint> point;
};

ChartPoint readPoint(const std::string& text) {
    const auto comma = text.find(',');
    if (comma == std::string::npos) throw CLI::ValidationError("--at", "\"" + text + "\" is no point like 120,340.5");
    return {readNonNegative("--at", text.substr(0, comma)), readNonNegative("--at", text.substr(comma + 1))};
}

DayChart chartOf(ModelContext& store, Date date, double hourHeight) {
    const auto calendar = Calendar::current();
    const Date now = platform::currentDate();
    DayChart chart{.date = date};
    auto snapshots =
        TimelineProcessing::snapshotsOfDay(recordsStartingIn(store, calendar.day(date)), date, now, calendar);
    chart.items = TimelineProcessing::makeItems(TimelineProcessing::process(std::move(snapshots), now, calendar));
    chart.activeHours = TimelineProcessing::activityHours(chart.items);
    chart.layout = HourLayout(chart.activeHours, hourHeight);
    TimelineProcessing::layOut(chart.items, chart.layout);
    chart.annotations = placeProjectAnnotations(annotationsOfDay(store, date), date, calendar);
    return chart;
}

Json blocksJson(const DayChart& chart) {
    const auto optional = [](const std::optional<std::string>& text) { return text ? Json(*text) : Json(nullptr); };
    Json blocks = Json::array();
    for (const ProcessedActivityItem& item : chart.items)
        blocks.push_back({{"id", item.id.string()},
                          {"start", iso8601Microseconds(item.stretch.start)},
                          {"end", iso8601Microseconds(item.stretch.end)},
                          {"lane", item.lane.index},
                          {"lanes", item.lane.count},
                          {"start_hour", item.startHour},
                          {"duration", item.duration},
                          {"bundle_id", optional(item.bundleId)},
                          {"app_name", item.appName},
                          {"window_title", optional(item.windowTitle)},
                          {"document_path", optional(item.documentPath)},
                          {"url", optional(item.url)},
                          {"category", optional(item.category)},
                          {"tags", item.tags},
                          {"color", hexText(item.color)},
                          {"y_top", item.yTop},
                          {"y_bottom", item.yBottom},
                          {"should_show_name", item.shouldShowName}});
    return blocks;
}

Json annotationsJson(const DayChart& chart, const TimelineOptions& options) {
    Json annotations = Json::array();
    for (const PlacedProjectAnnotation& placed : chart.annotations) {
        const ProjectAnnotation& annotation = placed.annotation;
        Json json{{"id", annotation.id.string()},
                  {"project_id", annotation.dbAnnotation->project() ? Json(annotation.project->id().string()) : Json()},
                  {"start_hour", annotation.startHour},
                  {"end_hour", annotation.endHour},
                  {"column_index", placed.columnIndex},
                  {"total_columns", placed.totalColumns}};
        if (options.width) {
            const BarFrame frame =
                barFrame(placed, options.hourHeight, *options.width, chart.layout.yPosition(annotation.startHour));
            json["x"] = frame.x;
            json["y"] = frame.y;
            json["width"] = frame.width;
            json["height"] = frame.height;
        }
        annotations.push_back(std::move(json));
    }
    return annotations;
}

const ProcessedActivityItem* hitOf(const DayChart& chart, const TimelineOptions& options) {
    return DayTimelineGeometry::hitTest(chart.items, *options.point, options.width.value_or(preferredWidth));
}

std::string jsonOf(const DayChart& chart, const TimelineOptions& options) {
    Json json{{"blocks", blocksJson(chart)},
              {"active_hours", chart.activeHours},
              {"hour_offsets", chart.layout.offsets()},
              {"total_height", chart.layout.totalHeight()},
              {"sidebar_total_hours", chart.totalHours()},
              {"annotations", annotationsJson(chart, options)}};
    if (options.point) {
        const auto* hit = hitOf(chart, options);
        json["hit"] = hit ? Json(hit->id.string()) : Json();
    }
    return jsonText(json) + "\n";
}

void timeline(const CommandContext& context, const TimelineOptions& options) {
    const Date date = options.day ? Calendar::current().date(*options.day) : platform::currentDate();
    ModelContext store(context.open(StoreAccess::read));
    const DayChart chart = chartOf(store, date, options.hourHeight);
    Output output;
    if (context.json) {
        output.write(jsonOf(chart, options));
    } else {
        drawDay(chart, [&](std::string_view line) { output.write(line); });
        if (options.point) {
            const auto* hit = hitOf(chart, options);
            output.write("\n" + (hit ? hit->id.string() : std::string("no block")) + "\n");
        }
    }
    output.finish();
}

}  // namespace

void addTimelineCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("timeline", "Show a day as blocks, as the day chart does");
    const auto options = std::make_shared<TimelineOptions>();
    addDateOption(*command, "--date", options->day, "The day; today if left out");
    addTextOption(*command, "--hour-height", "POINTS", "Height of an hour in which something happened; 180 if left out",
                  [options](const std::string& text) { options->hourHeight = readNonNegative("--hour-height", text); });
    addTextOption(*command, "--width", "POINTS", "Width of the chart: adds the frame of each project's bar",
                  [options](const std::string& text) { options->width = readNonNegative("--width", text); });
    addTextOption(*command, "--at", "X,Y", "Adds the block under this point",
                  [options](const std::string& text) { options->point = readPoint(text); });
    command->callback([&context, options] { context.command = [&context, options] { timeline(context, *options); }; });
}

}  // namespace quorvane::cli
