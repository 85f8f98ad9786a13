#include "billing/BillingLedger.h"

#include "billing/BillingReport.h"
#include "store/ProjectTimeAnnotation.h"
#include "support/Builders.h"
#include "support/TemporaryStore.h"

#include <algorithm>
#include <deque>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gmock/gmock.h>
#include <map>
#include <random>

namespace quorvane {
namespace {

using Texts = std::vector<std::string>;
namespace Builder = BillingReportBuilder;

// --- Reports over all objects -------------------------------------------------------------------------------------

/// A store in one piece as light values: what a ledger would hold that knew neither range nor filter.
struct WholeStore {
    explicit WholeStore(ModelContext& context) {
        std::map<const Project*, const BillingProject*> lights{{nullptr, nullptr}};
        for (const auto& project : context.fetch<Project>())
            lights[project.get()] = &projects.emplace_back(BillingProject{.id = project->id(),
                                                                          .name = project->name(),
                                                                          .clientName = project->clientName(),
                                                                          .hourlyRate = project->hourlyRate(),
                                                                          .currencyCode = project->currencyCode()});
        for (const auto& record : context.fetch<ActivityRecord>(
                 {.sort = {descending(&ActivityRecord::startTime), ascending(&ActivityRecord::id)}}))
            records.push_back({.id = record->id(),
                               .startTime = record->startTime(),
                               .endTime = record->endTime(),
                               .appName = texts.emplace_back(record->appName().value_or("")),
                               .category = texts.emplace_back(record->category().value_or("")),
                               .billingStatus = record->billingStatusValue(),
                               .confidence = record->confidence(),
                               .project = lights.at(record->project().get())});
        for (const auto& annotation : context.fetch<ProjectTimeAnnotation>())
            annotations.push_back({annotation->id(), annotation->startTime(), annotation->endTime(),
                                   lights.at(annotation->project().get())});
    }

    std::deque<BillingProject> projects;
    std::vector<BillingRecord> records;
    std::vector<BillingAnnotation> annotations;
    std::deque<std::string> texts;
};

/// By id, as nearly equal rows may stand either way; numbers are added up in different orders.
Texts linesOf(const std::vector<BillingReportRow>& rows) {
    Texts lines;
    for (const auto& row : rows)
        lines.push_back(fmt::format("{} {}, {}: {} items, {:.6f} h, {:.6f} h, {:.6f} {}", row.id.string(),
                                    row.projectName, row.clientName, row.recordCount, row.hours, row.reviewHours,
                                    row.amount(), row.currencyCode));
    std::ranges::sort(lines);
    return lines;
}

Texts linesOf(const std::vector<BillingDayBreakdown>& days) {
    Texts lines;
    for (const auto& day : days)
        lines.push_back(fmt::format("{}: {:.6f} h, {:.6f} h, {:.6f}; {}; {}", describe(day.date), day.hours,
                                    day.reviewHours, day.amount, fmt::join(day.projectNames, ","),
                                    fmt::join(day.activitySummaries, ",")));
    return lines;
}

Texts idsOf(const auto& items) {
    Texts ids;
    for (const auto& item : items)
        ids.push_back(item.id.string());
    return ids;
}

/// Reads the store in both ways, the report over a connection of its own. How many rows it has comes back.
std::size_t expectSameReport(TemporaryStore& store, const BillingReportRange& range, const BillingFilters& filters,
                             Date now, const Calendar& calendar) {
    const Localization english("en");
    const auto connection = store.anotherContext();
    const auto report = makeBillingReport(*connection, range, filters, now, calendar, english);
    const WholeStore whole(store.context());
    const auto& scope = report.scope;
    const auto billable = Builder::billableRecords(whole.records, scope);
    EXPECT_EQ(idsOf(report.billable), idsOf(billable));
    EXPECT_EQ(idsOf(report.review), idsOf(Builder::reviewRecords(whole.records, scope)));
    EXPECT_EQ(linesOf(report.rows),
              linesOf(Builder::reportRows(whole.records, whole.annotations, whole.projects, scope)));
    EXPECT_EQ(linesOf(report.days),
              linesOf(Builder::dayBreakdown(billable, Builder::matchingAnnotations(whole.annotations, scope), scope,
                                            calendar, english)));
    return report.rows.size();
}

// --- Stores of chance ---------------------------------------------------------------------------------------------

class RandomStore {
public:
    explicit RandomStore(unsigned seed) : random_(seed) {}

    template <class Choice>
    Choice any(std::initializer_list<Choice> choices) {
        return choices.begin()[random_() % choices.size()];
    }

    /// A minute of the days around, or an edge of the range: at it, a microsecond before, a microsecond behind.
    Date date(Date start, Date end) {
        const Date edge = any({start, end});
        if (any({true, false})) return edge + 60s * (static_cast<double>(random_() % 12000) - 6000);
        return dateFromMicroseconds(microsecondsSince1970(edge) + any({-1, 0, 1}));
    }

    void fill(ModelContext& context, Date start, Date end) {
        std::vector<std::shared_ptr<Project>> projects{nullptr};
        for (auto count = random_() % 8; count > 0; --count) {
            const auto project = insertProject(context, any({"Web", "App", "Own", "Ω"}), any({0.0, 50.0, 33.3}));
            project->clientName =
                any<std::optional<std::string>>({std::nullopt, "", " \n", "ACME", "ACME ", "\u3000Zeta"});
            project->currencyCode = any({"USD", "EUR", "JPY"});
            projects.push_back(project);
        }
        for (auto count = random_() % 60; count > 0; --count) {
            const auto record = aRecord().project(projects[random_() % projects.size()]).in(context);
            record->startTime = date(start, end);
            if (any({true, true, false})) record->endTime = any({record->startTime(), date(start, end)});
            record->appName = any<std::optional<std::string>>({std::nullopt, "", "Mail", "a", "b", "c", "d"});
            record->category = any<std::optional<std::string>>({std::nullopt, "", " ", "work", " work\n", "Work"});
            record->billingStatus = any({"review", "billable", "billable", "nonBillable", "excluded", "someday"});
            record->confidence = any({0.5, 0.85, 0.9, 1.0});
        }
        for (auto count = random_() % 10; count > 0; --count) {
            const auto annotation = std::make_shared<ProjectTimeAnnotation>();
            context.insert(annotation);
            annotation->startTime = date(start, end);
            annotation->endTime = any({annotation->startTime(), date(start, end), end});
            annotation->project = projects[random_() % projects.size()];
        }
        context.save();
    }

private:
    std::mt19937 random_;
};

TEST(BillingLedgerTest, ReportsAreThoseOfAPlainWalkOverTheStore) {
    const Calendar calendars[] = {{"en_US", "America/New_York"}, {"de_DE", "Australia/Lord_Howe"}, {"de_DE", "UTC"}};
    std::size_t lines = 0;
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(seed);
        RandomStore random(seed);
        const Calendar& calendar = calendars[seed % 3];
        // A few days after the clocks of all three were changed, or not.
        const Date now = at(random.any({"2026-11-03T17:00:00.25Z", "2026-10-07T13:00:00Z", "2026-03-10T04:30:00Z"}));
        const auto kind = random.any({BillingReportRangeKind::week, BillingReportRangeKind::month,
                                      BillingReportRangeKind::quarter, BillingReportRangeKind::custom});
        const auto range = BillingReportRange::fromKind(kind, now - 72h, now - 24h);
        TemporaryStore store;
        random.fill(store.context(), rangeStart(range, now, calendar), rangeEnd(range, now, calendar));
        BillingFilters filters{.client = std::string(random.any<std::string_view>(
                                   {BillingClientFilter::all, BillingClientFilter::all, BillingClientFilter::all,
                                    BillingClientFilter::none, "ACME"})),
                               .category = std::string(random.any<std::string_view>(
                                   {BillingCategoryFilter::all, BillingCategoryFilter::all, BillingCategoryFilter::all,
                                    BillingCategoryFilter::none, "work"}))};
        const auto projects = store.context().fetch<Project>();
        if (!projects.empty() && random.any({true, false, false, false})) filters.projectId = projects.front()->id();
        lines += expectSameReport(store, range, filters, now, calendar);
    }
    EXPECT_GT(lines, 200U);  // the reports are not all empty
}

TEST(BillingLedgerTest, ChangesThatAreNotSavedCount) {
    TemporaryStore store;
    RandomStore(7).fill(store.context(), at("09:00:00"), at("18:00:00"));
    const auto project = insertProject(store.context(), "New", 100);
    store.context().save();
    for (const auto& record : store.context().fetch<ActivityRecord>())
        record->project = project;
    for (const auto& annotation : store.context().fetch<ProjectTimeAnnotation>())
        annotation->project = project;
    const auto load = [&] { return BillingLedger::load(store.context(), at("09:00:00"), at("18:00:00"), {}); };
    const auto unsaved = load();
    store.context().save();
    const auto saved = load();
    EXPECT_GT(saved.records().size() * saved.annotations().size(), 0U);
    EXPECT_EQ(idsOf(unsaved.records()), idsOf(saved.records()));
    EXPECT_THAT(idsOf(unsaved.annotations()), testing::UnorderedElementsAreArray(idsOf(saved.annotations())));
    EXPECT_EQ(unsaved.records().front().project->name, "New");
}

TEST(BillingLedgerTest, ProjectsWithOneIdShareTheRowOfTheFirst) {
    TemporaryStore store;
    const auto first = insertProject(store.context(), "First", 100);
    const auto second = insertProject(store.context(), "Second", 10);
    second->id = first->id();
    second->clientName = "ACME";
    aRecord().from("09:00:00").to("10:00:00").project(first).in(store.context());
    aRecord().from("10:00:00").to("12:00:00").project(second).status(BillingStatus::billable).in(store.context());
    store.context().save();
    const std::pair<BillingFilters, std::string> rows[] = {
        {{}, "First 3 1 300"}, {{.projectId = first->id()}, "First 3 1 300"}, {{.client = "ACME"}, "First 2 0 200"}};
    const auto day = BillingReportRange::fromKind(BillingReportRangeKind::custom, at("12:00:00"), at("12:00:00"));
    for (const auto& [filters, expected] : rows) {
        const auto report = makeBillingReport(store.context(), day, filters, at("12:00:00"), Calendar("en_US", "UTC"),
                                              Localization("en"));
        ASSERT_EQ(report.rows.size(), 1U);
        const auto& only = report.rows.front();
        EXPECT_EQ(fmt::format("{} {} {} {}", only.projectName, only.hours, only.reviewHours, only.amount()), expected);
    }
}

}  // namespace
}  // namespace quorvane
