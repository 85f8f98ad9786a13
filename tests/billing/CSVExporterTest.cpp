#include "billing/CSVExporter.h"

#include "base/Text.h"
#include "store/EntityDescription.h"
#include "support/StoreTest.h"
#include "support/TextTable.h"

#include <fmt/format.h>
#include <limits>

namespace quorvane {
namespace {

constexpr std::string_view header =
    "id,start_time_iso,end_time_iso,duration_seconds,app_bundle_id,app_name,window_title,document_path,url,category,"
    "project_name,client_name,hourly_rate,currency_code,billing_status,billable_amount,tags,source,confidence,device_"
    "id,"
    "user_local_id,created_at,updated_at";

constexpr const char* id = "00000000-0000-4000-8000-000000000006";

std::shared_ptr<Project> projectAt(double hourlyRate) {
    auto project = std::make_shared<Project>();
    project->name = "Web";
    project->clientName = "ACME";
    project->hourlyRate = hourlyRate;
    project->currencyCode = "EUR";
    return project;
}

std::shared_ptr<ActivityRecord> aRecordWith(const std::function<void(ActivityRecord&)>& change) {
    auto record = aRecord().from("2026-03-04T15:00:00Z").to("2026-03-04T16:00:00Z").make();
    record->id = *Uuid::parse(id);
    change(*record);
    return record;
}

/// The one line that the record makes.
std::string lineOf(const std::shared_ptr<ActivityRecord>& record) {
    const std::string csv = CSVExporter::makeCSV({record});
    EXPECT_TRUE(csv.starts_with(header));
    return csv.substr(header.size() + 1);
}

std::string written(ModelContext& context, const CSVExporter::Selection& selection) {
    std::string out;
    CSVExporter::writeCSV(context, selection, [&](std::string_view piece, std::size_t) { out += piece; });
    return out;
}

const CSVExporter::Selection everything{.start = distantPast, .end = at("9999-12-31T23:59:59Z")};

/// The applications of the exported lines, in order.
std::vector<std::string> exportedApps(ModelContext& context, const CSVExporter::Selection& selection) {
    std::vector<std::string> apps;
    const auto lines = text::split(written(context, selection), '\n');
    for (std::size_t i = 1; i < lines.size(); ++i)
        apps.push_back(text::split(lines[i], ',')[5]);
    return apps;
}

TEST(CSVExporterTest, WritesEveryColumnAsItsValueStands) {
    const std::string start = std::string(id) + ",2026-03-04T15:00:00Z,2026-03-04T16:00:00Z,3600,";
    const std::string end = ",2026-03-04T15:00:00Z,2026-03-04T16:00:00Z";
    EXPECT_EQ(lineOf(aRecordWith([](ActivityRecord& record) {
                  record.appBundleId = "com.example.editor";
                  record.appName = "Editor";
                  record.windowTitle = "main.cpp";
                  record.documentPath = "/home/mia/main.cpp";
                  record.url = "https://example.com/";
                  record.category = "工作";
                  record.project = projectAt(85.5);
                  record.tags = "code";
                  record.source = "system";
                  record.confidence = 0.85;
                  record.deviceId = "D";
                  record.userLocalId = "U";
              })),
              start +
                  "com.example.editor,Editor,main.cpp,/home/mia/main.cpp,https://example.com/,工作,Web,ACME,85.50,EUR,"
                  "review,85.50,code,system,0.850,D,U" +
                  end);
    const std::pair<const char*, const char*> titles[] = {
        {"", ""},
        {R"(He said "hi", twice)", R"("He said ""hi"", twice")"},
        {"two\nlines", "\"two\nlines\""},
        {" a\rb ", " a\rb "},
        {"=1+1;'\\", "=1+1;'\\"},  // a formula is text like any other
    };
    for (const auto& [title, cell] : titles)
        EXPECT_EQ(lineOf(aRecordWith([&](ActivityRecord& record) { record.windowTitle = std::string(title); })),
                  start + ",," + cell + ",,,,,,0.00,,review,0.00,,,1.000,," + end);
    for (const auto& [tags, cell] : {std::pair("a,b,, c", "a;b;; c"), {"a,\"b\"", "\"a;\"\"b\"\"\""}})
        EXPECT_EQ(lineOf(aRecordWith([&](ActivityRecord& record) { record.tags = std::string(tags); })),
                  start + ",,,,,,,,0.00,,review,0.00," + cell + ",,1.000,," + end);
    const std::pair<const char*, const char*> statuses[] = {{"nonBillable", "nonBillable,0.00"},
                                                            {"Billable", "review,100.00"}};  // unknown
    for (const auto& [status, cells] : statuses)
        EXPECT_EQ(lineOf(aRecordWith([&](ActivityRecord& record) {
                      record.project = projectAt(100);
                      record.project()->clientName = std::nullopt;
                      record.project()->name = "A, B";
                      record.billingStatus = std::string(status);
                  })),
                  start + R"(,,,,,,"A, B",,100.00,EUR,)" + cells + ",,,1.000,," + end);
}

TEST(CSVExporterTest, CountsWholeSecondsAndBillsThem) {
    for (const auto& row : textTable(QUORVANE_BILLING_DATA "/billed-seconds.txt")) {
        SCOPED_TRACE(row[0]);
        const auto record = aRecordWith([&](ActivityRecord& changed) {
            changed.startTime = at(row[1]);
            changed.endTime = row[2] == "open" ? std::nullopt : std::optional(at(row[2]));
            changed.billingStatus = row[3];
            changed.project = projectAt(100);
        });
        EXPECT_EQ(std::to_string(CSVExporter::durationSeconds(*record)), row[4]);
        const auto cells = text::split(lineOf(record), ',');
        EXPECT_EQ(cells[2].empty(), row[2] == "open");
        EXPECT_EQ(cells[3], row[4]);
        EXPECT_EQ(cells[15], row[5]);
    }
}

TEST(CSVExporterTest, CountsBetweenDatesThatNoCalendarHas) {
    EXPECT_EQ(CSVExporter::durationSeconds(*aRecordWith([](ActivityRecord& record) {
                  record.startTime = dateFromSecondsSince1970(-std::numeric_limits<double>::infinity());
                  record.endTime = dateFromSecondsSince1970(1e300);
              })),
              18446744073709);
}

TEST(CSVExporterTest, RoundsAsTheExactValueLies) {
    const std::pair<double, const char*> rows[] = {
        {33.333, "33.33"}, {0.125, "0.12"},
        {0.375, "0.38"},   {1.005, "1.00"},
        {2.675, "2.67"},   {1e15 / 3, "333333333333333.31"},
        {-0.001, "-0.00"}, {1e22, "10000000000000000000000.00"},
    };
    for (const auto& [rate, expected] : rows) {
        SCOPED_TRACE(expected);
        const auto cells =
            text::split(lineOf(aRecordWith([&](auto& record) { record.project = projectAt(rate); })), ',');
        EXPECT_EQ(cells[12], expected);
        EXPECT_EQ(cells[15], expected);
    }
}

class CSVExportTest : public StoreTest {};

TEST_F(CSVExportTest, WritesTheSameBytesWithObjectsAndWithout) {
    const auto web = insertProject(context(), "Web, \"App\"", 33.333);
    const auto bare = insertProject(context(), "Bare");
    for (int i = 0; i < 500; ++i) {
        const auto start =
            fmt::format("2026-03-04T{:02}:{:02}:{:02}.{:06}Z", i / 60 % 24, i % 60, i % 7, i * 1999 % 1'000'000);
        auto record =
            aRecord().from(start).app("Editor").title(i % 3 == 0 ? "a,\"b\"\nc" : "日报\r").tags("x,y").make();
        if (i % 5 != 0) record->endTime = record->startTime() + Seconds{i * 1.37};
        record->project = i % 2 == 0 ? web : i % 3 == 0 ? bare : nullptr;
        record->confidence = i / 500.0;
        record->billingStatus = std::vector<std::string>{"review", "billable", "nonBillable", "excluded",
                                                         ""}[static_cast<std::size_t>(i) % 5];
        context().insert(record);
    }
    context().save();
    const auto records = context().fetch<ActivityRecord>(
        {.sort = {descending(&ActivityRecord::startTime), ascending(&ActivityRecord::id)}});
    EXPECT_TRUE(written(context(), everything) == CSVExporter::makeCSV(records));
}

TEST_F(CSVExportTest, PutsTheNewestFirstAndTheSmallerIdFirstAmongEquals) {
    EXPECT_EQ(written(context(), everything), header);
    for (const auto& [time, uuid] : {std::pair{"09:00:00", "B"}, {"09:00:00", "A"}, {"10:00:00", "C"}}) {
        auto record = aRecord().from(time).app(uuid).make();
        record->id = *Uuid::parse(fmt::format("{0}0000000-0000-4000-8000-000000000000", uuid));
        context().insert(record);
    }
    context().save();
    EXPECT_THAT(exportedApps(context(), everything), ElementsAre("C", "A", "B"));
}

TEST_F(CSVExportTest, TakesBothBoundsOfTheRange) {
    for (const char* time : {"08:59:59.999999", "09:00:00", "09:30:00", "10:00:00", "10:00:00.000001"})
        aRecord().from(time).app(time).in(context());
    context().save();
    EXPECT_THAT(exportedApps(context(), {.start = at("09:00:00"), .end = at("10:00:00")}),
                ElementsAre("10:00:00", "09:30:00", "09:00:00"));
}

TEST_F(CSVExportTest, LeavesOutRecordsWithoutProjectOnceOneIsSelected) {
    const auto one = insertProject(context(), "One");
    const auto two = insertProject(context(), "Two");
    aRecord().from("09:00:00").app("none").in(context());
    aRecord().from("10:00:00").app("one").project(one).in(context());
    aRecord().from("11:00:00").app("two").project(two).in(context());
    context().save();
    auto selection = everything;
    EXPECT_THAT(exportedApps(context(), selection), ElementsAre("two", "one", "none"));
    selection.projects = {one->id()};
    EXPECT_THAT(exportedApps(context(), selection), ElementsAre("one"));
    selection.projects = {one->id(), two->id()};
    EXPECT_THAT(exportedApps(context(), selection), ElementsAre("two", "one"));
    selection.projects = {Uuid()};
    EXPECT_EQ(written(context(), selection), header);
}

TEST(CSVExporterFileNameTest, BearsTheLocalTimeInTheUsersLocale) {
    // The formatter is made once for the process; the test program runs in UTC and English.
    EXPECT_EQ(CSVExporter::defaultFileName(at("2026-03-04T15:07:09.9Z")),
              "Quorvane_Activities_2026-03-04_15-07-09.csv");
}

}  // namespace
}  // namespace quorvane
