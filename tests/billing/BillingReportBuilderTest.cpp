#include "billing/BillingReportBuilder.h"

#include "base/DateText.h"
#include "support/Builders.h"
#include "support/Matching.h"

#include <array>
#include <fmt/format.h>
#include <fmt/ranges.h>

namespace quorvane {
namespace {

namespace Builder = BillingReportBuilder;
using Texts = std::vector<std::string>;
constexpr auto review = BillingStatus::review;
constexpr auto billable = BillingStatus::billable;
constexpr auto nonBillable = BillingStatus::nonBillable;
constexpr auto excluded = BillingStatus::excluded;

Uuid uuid(std::uint8_t last) {
    std::array<std::uint8_t, 16> bytes{};
    bytes[15] = last;
    return Uuid(bytes);
}

/// Web and App are projects of the report; `gone` left the list.
const std::deque<BillingProject> projects = {
    {.id = uuid(1), .name = "Web", .clientName = "ACME", .hourlyRate = 100, .currencyCode = "EUR"},
    {.id = uuid(2), .name = "App", .clientName = "ACME ", .hourlyRate = 50, .currencyCode = "USD"},
    {.id = uuid(3), .name = "Own", .clientName = "\u3000 \n", .currencyCode = "USD"},
    {.id = uuid(4), .name = "Chores", .currencyCode = "USD"},
};
const BillingProject goneProject{.id = uuid(9), .name = "Gone", .hourlyRate = 10, .currencyCode = "USD"};
const BillingProject* const web = &projects[0];
const BillingProject* const app = &projects[1];
const BillingProject* const own = &projects[2];
const BillingProject* const chores = &projects[3];
const BillingProject* const gone = &goneProject;

const Date midnight = at("2026-03-02T00:00:00Z");

/// Times count from midnight. Without an end it is open.
struct Record {
    const BillingProject* project;
    Seconds start;
    std::optional<Seconds> end{};
    BillingStatus status = billable;
    double confidence = 1;
    const char* app = "Editor";
    const char* category = "";
};

struct Annotation {
    const BillingProject* project;
    Seconds start;
    Seconds end;
};

/// What is in the store, and the lines that come of it.
using Case = std::tuple<const char*, std::vector<Record>, std::vector<Annotation>, Texts>;

std::vector<BillingRecord> made(const std::vector<Record>& records) {
    std::vector<BillingRecord> list;
    for (const Record& record : records)
        list.push_back({.id = uuid(static_cast<std::uint8_t>(list.size())),
                        .startTime = midnight + record.start,
                        .endTime = record.end ? std::optional(midnight + *record.end) : std::nullopt,
                        .appName = record.app,
                        .category = record.category,
                        .billingStatus = record.status,
                        .confidence = record.confidence,
                        .project = record.project});
    return list;
}

std::vector<BillingAnnotation> made(const std::vector<Annotation>& annotations) {
    std::vector<BillingAnnotation> list;
    for (const Annotation& annotation : annotations)
        list.push_back({uuid(0), midnight + annotation.start, midnight + annotation.end, annotation.project});
    return list;
}

/// Monday, 2 March 2026, with the instant that ends it.
Builder::Scope monday(BillingFilters filters = {}) {
    return {midnight, midnight + 24h, std::move(filters)};
}

/// Name, hours, hours to review, items, amount.
Texts rowsOf(const std::vector<Record>& records, const std::vector<Annotation>& annotations) {
    Texts texts;
    for (const auto& row : Builder::reportRows(made(records), made(annotations), projects, monday()))
        texts.push_back(fmt::format("{} {} {} {} {} {}", row.projectName, row.hours, row.reviewHours, row.recordCount,
                                    row.currencyCode, row.amount()));
    return texts;
}

TEST(BillingReportBuilderTest, RowsSumWhatEarnsMoneyAndWhatWasAssigned) {
    const Case rows[] = {
        {"nothing", {}, {}, {}},
        {"counts twice", {{web, 12h, 13h}}, {{web, 12h, 13h}}, {"Web 2 0 2 EUR 200"}},
        {"twice, apart", {{web, 12h, 13h}}, {{app, 12h, 13h}}, {"Web 1 0 1 EUR 100", "App 1 0 1 USD 50"}},
        {"waits for review", {{web, 12h, 13h, review}}, {}, {"Web 1 1 1 EUR 100"}},
        {"unsure", {{web, 12h, 13h, billable, 0.85}}, {}, {"Web 1 1 1 EUR 100"}},
        {"just sure", {{web, 12h, 13h, billable, 0.9}}, {}, {"Web 1 0 1 EUR 100"}},
        {"open", {{web, 12h}, {web, 12h, 13h}}, {}, {"Web 1 0 2 EUR 100"}},
        {"end before start", {{web, 13h, 12h}}, {}, {"Web 0 0 1 EUR 0"}},
        {"earns nothing", {{web, 12h, 13h, nonBillable, 0.5}, {web, 12h, {}, excluded}}, {}, {}},
        {"without a project", {{nullptr, 12h, 13h}}, {{nullptr, 12h, 13h}}, {}},
        {"starts before the range", {{web, -0.5s, 12h}}, {}, {}},
        {"starts at its edges", {{web, 0h, 1h}, {web, 24h, 26h}}, {}, {"Web 3 0 2 EUR 300"}},
        {"starts after it", {{web, 24h + 0.5s, 28h}}, {}, {}},
        {"over the edges", {}, {{web, -1h, 2h}, {app, 23h, 25h}}, {"Web 2 0 1 EUR 200", "App 1 0 1 USD 50"}},
        {"ends with the start", {}, {{web, -1h, 0h}}, {}},
        {"begins with the end", {}, {{web, 24h, 25h}}, {"Web 0 0 1 EUR 0"}},
        {"begins after the end", {}, {{web, 24h + 0.5s, 25h}}, {}},
        {"assigned for no time, or swapped", {}, {{web, 12h, 12h}, {web, 13h, 12h}}, {"Web 0 0 2 EUR 0"}},
        {"the project is gone", {{gone, 12h, 13h}, {web, 12h, 13h}}, {}, {"Web 1 0 1 EUR 100"}},
        {"gone, but assigned", {{gone, 12h, 13h}}, {{gone, 12h, 13h}}, {"Gone 1 0 1 USD 10"}},
    };
    for (const auto& [name, records, annotations, expected] : rows)
        EXPECT_EQ(rowsOf(records, annotations), expected) << name;
}

TEST(BillingReportBuilderTest, RowsGoByAmountThenHoursThenId) {
    const BillingProject late{.id = uuid(5), .name = "Late", .currencyCode = "USD"};
    const BillingProject refund{.id = uuid(6), .name = "Refund", .hourlyRate = -1, .currencyCode = "USD"};
    const std::vector<Annotation> assigned = {{&refund, 12h, 20h}, {&late, 12h, 13h}, {chores, 12h, 13h},
                                              {own, 12h, 14h},     {web, 12h, 13h},   {app, 12h, 14h}};
    EXPECT_EQ(rowsOf({}, assigned), (Texts{"App 2 0 1 USD 100", "Web 1 0 1 EUR 100", "Own 2 0 1 USD 0",
                                           "Chores 1 0 1 USD 0", "Late 1 0 1 USD 0", "Refund 8 0 1 USD -8"}));
}

TEST(BillingReportBuilderTest, FiltersChooseAmongProjectsAndCategories) {
    const std::tuple<const char*, BillingFilters, Texts> rows[] = {
        {"all", {}, {"App 2", "Web 3", "Chores 1", "Own 1"}},
        {"one project", {.projectId = uuid(1)}, {"Web 3"}},
        {"unknown project", {.projectId = uuid(8)}, {}},
        {"client, letter for letter", {.client = "ACME"}, {"Web 3"}},
        {"client, with the blank that its project has", {.client = "ACME "}, {"App 2"}},
        {"none, or blanks", {.client = std::string(BillingClientFilter::none)}, {"Chores 1", "Own 1"}},
        {"empty text", {.client = ""}, {}},
        {"category drops what was assigned", {.category = "work"}, {"Web 1"}},
        {"no category", {.category = std::string(BillingCategoryFilter::none)}, {"App 1", "Chores 1", "Own 1"}},
        {"client and category", {.client = "ACME ", .category = "work"}, {}},
    };
    const std::vector<Record> records = {
        {web, 12h, 13h, billable, 1, "Editor", "\u3000work\n"},
        {web, 12h, 13h, billable, 1, "Editor", "Work"},
        {app, 12h, 16h, billable, 1, "Editor", " \n"},
        {own, 12h, 13h},
        {chores, 12h, 14h},
    };
    const std::vector<Annotation> annotations = {{web, 12h, 13h}, {app, 12h, 16h}};
    for (const auto& [name, filters, expected] : rows) {
        Texts namesWithItems;
        for (const auto& line : Builder::reportRows(made(records), made(annotations), projects, monday(filters)))
            namesWithItems.push_back(fmt::format("{} {}", line.projectName, line.recordCount));
        EXPECT_EQ(namesWithItems, expected) << name;
    }
}

TEST(BillingReportBuilderTest, ClientsToPickAreTrimmedSortedAndEachOnce) {
    std::deque<BillingProject> some(1);
    for (const char* name : {"zeta", "ACME ", "\nÉtoile", "ACME", " \t\n", "Zeta"})
        some.push_back({.clientName = name});
    EXPECT_EQ(Builder::clientNames(some), (Texts{"ACME", "Zeta", "zeta", "Étoile"}));
}

TEST(BillingReportBuilderTest, TheReviewListHoldsWhatIsUncertainButNothingExcluded) {
    const auto list = made({
        {web, 9h, 10h, review, 1, "to review"},
        {web, 9h + 1min, 10h, billable, 1, "done"},
        {web, 9h + 2min, 10h, billable, 0.9, "just sure"},
        {web, 9h + 3min, 10h, billable, 0.85, "unsure"},
        {web, 9h + 4min, {}, billable, 1, "open"},
        {web, 9h + 5min, 10h, nonBillable, 1, "free"},
        {web, 9h + 6min, {}, nonBillable, 1, "free, open"},
        {web, 9h + 7min, 10h, nonBillable, 0.5, "free, unsure"},
        {web, 9h + 8min, {}, excluded, 0.5, "excluded"},
        {nullptr, 9h + 9min, {}, review, 0.5, "no project"},
        {app, 9h + 10min, {}, review, 0.5, "other client"},
        {web, -1h, 12h, review, 1, "yesterday"},
        {web, 24h, {}, review, 1, "last instant"},
        {web, 24h + 0.5s, {}, review, 1, "tomorrow"},
    });
    Texts apps;
    for (const auto& record : Builder::reviewRecords(list, monday({.client = "ACME"})))
        apps.emplace_back(record.appName);
    EXPECT_THAT(apps, ElementsAre("last instant", "free, unsure", "free, open", "open", "unsure", "to review"));
    apps.clear();
    for (const auto& record : Builder::billableRecords(list, monday({.client = "ACME"})))
        apps.emplace_back(record.appName);
    EXPECT_THAT(apps, ElementsAre("to review", "done", "just sure", "unsure", "open", "last instant"));
}

/// First instant, hours, hours to review, amount; projects; summaries.
Texts daysOf(const std::vector<Record>& records, const std::vector<Annotation>& annotations, const char* zone = "UTC",
             const char* language = "en") {
    const Builder::Scope scope{midnight, at("2026-11-30T00:00:00Z"), {}};
    Texts texts;
    for (const auto& day : Builder::dayBreakdown(made(records), made(annotations), scope, Calendar("en_US", zone),
                                                 Localization(language)))
        texts.push_back(fmt::format("{} {} {} {} {} {}", localDateText(day.date, "MM-dd HH:mm"), day.hours,
                                    day.reviewHours, day.amount, fmt::join(day.projectNames, ","),
                                    fmt::join(day.activitySummaries, ",")));
    return texts;
}

TEST(BillingReportBuilderTest, DaysSumTheirRecordsAndWhatWasAssigned) {
    const BillingProject twin{.id = uuid(7), .name = "Web", .hourlyRate = 1, .currencyCode = "USD"};
    const auto named = [&](const char* appName, const char* category = "") {
        return Record{web, 12h, 12h, billable, 1, appName, category};
    };
    const std::vector<Record> five = {named("e"), named("d"), named("c"), named("b"), named("a")};
    const Record sixMinutes{web, 12h, 12h + 6min, review};
    const Case rows[] = {
        {"every rate, names once",
         {{web, 12h, 13h, review}, {&twin, 12h, 13h}, {app, 12h, 13h, billable, 0.5}},
         {},
         {"03-02 00:00 3 2 151 App,Web Editor"}},
        {"open, swapped", {{web, 12h}, {app, 13h, 12h}}, {}, {"03-02 00:00 0 0 0 App,Web Editor"}},
        {"without a project", {{nullptr, 12h, 13h, review}}, {}, {"03-02 00:00 1 0 0  Editor"}},
        {"category for a name", {named("", "b"), named("c", "a"), named("")}, {}, {"03-02 00:00 0 0 0 Web b,c"}},
        {"four summaries", five, {}, {"03-02 00:00 0 0 0 Web a,b,c,d"}},
        {"four of all, with what was assigned",
         five,
         {{web, 12h, 13h}, {web, 12h, 13h}, {app, 12h, 13h}},
         {"03-02 00:00 3 0 250 App,Web Assigned by hand: App,Assigned by hand: Web,a,b"}},
        {"assigned over the edges, and without a project",
         {{web, 12h, 13h, review}},
         {{web, -1h, 2h}, {app, 23h, 25h}, {nullptr, 12h, 13h}},
         {"03-01 00:00 2 0 200 Web Assigned by hand: Web", "03-02 00:00 4 1 200 App,Web Assigned by hand: App,Editor"}},
        {"as exact as seconds", {sixMinutes, sixMinutes, sixMinutes}, {}, {"03-02 00:00 0.3 0.3 30 Web Editor"}},
        {"midnight",
         {{web, 24h, 25h}, {web, 24h - 0.5s, 25h - 0.5s}},
         {},
         {"03-02 00:00 1 0 100 Web Editor", "03-03 00:00 1 0 100 Web Editor"}},
    };
    for (const auto& [name, records, annotations, expected] : rows)
        EXPECT_EQ(daysOf(records, annotations), expected) << name;
    EXPECT_THAT(daysOf({}, {{web, 12h, 13h}}, "UTC", "zh"), ElementsAre("03-02 00:00 1 0 100 Web 手动分配：Web"));
}

TEST(BillingReportBuilderTest, DaysAreThoseOfTheClock) {
    const std::tuple<const char*, const char*, std::string> rows[] = {
        {"America/New_York", "2026-11-01T06:30:00Z", "11-01 04:00"},     // an hour that comes twice
        {"America/New_York", "2026-11-02T04:59:59.5Z", "11-01 04:00"},   // last of 25 hours
        {"America/New_York", "2026-03-09T03:59:59Z", "03-08 05:00"},     // last of 23
        {"Australia/Lord_Howe", "2026-10-04T12:59:59Z", "10-03 13:30"},  // last of 23.5
        {"America/Santiago", "2026-09-06T05:00:00Z", "09-06 04:00"},     // no midnight
    };
    for (const auto& [zone, instant, day] : rows) {
        const Seconds start = at(instant) - midnight;
        EXPECT_THAT(daysOf({{web, start, start + 2h}}, {}, zone), ElementsAre(day + " 2 0 200 Web Editor"));
        EXPECT_THAT(daysOf({}, {{web, start, start + 2h}}, zone),
                    ElementsAre(day + " 2 0 200 Web Assigned by hand: Web"));
    }
}

TEST(BillingReportBuilderTest, TotalsMixCurrenciesUnderThatOfTheFirstRowWithARate) {
    const BillingReportRow free{.hours = 2, .reviewHours = 1, .hourlyRate = 0, .currencyCode = "JPY"};
    const BillingReportRow refund{.hours = 1, .hourlyRate = -3, .currencyCode = "GBP"};
    const BillingReportRow euro{.hours = 1.5, .reviewHours = 0.5, .hourlyRate = 10, .currencyCode = "EUR"};
    const BillingReportRow dollar{.hours = 0.25, .hourlyRate = 4, .currencyCode = "USD"};
    EXPECT_EQ(Builder::primaryCurrency({}), "USD");
    EXPECT_EQ(Builder::primaryCurrency({free, refund}), "USD");
    EXPECT_EQ(Builder::primaryCurrency({free, refund, euro, dollar}), "EUR");
    const auto sums = Builder::totals({free, refund, euro, dollar});
    EXPECT_EQ(sums.hours, 4.75);
    EXPECT_EQ(sums.reviewHours, 1.5);
    EXPECT_EQ(sums.amount, 13);
    EXPECT_EQ(Builder::totals({}).amount, 0);
}

}  // namespace
}  // namespace quorvane
