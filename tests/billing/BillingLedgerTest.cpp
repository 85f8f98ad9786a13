#include "billing/BillingLedger.h"

#include "base/Text.h"
#include "billing/BillingReport.h"
#include "store/ProjectTimeAnnotation.h"
#include "support/Builders.h"
#include "support/TemporaryStore.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gmock/gmock.h>
#include <random>
#include <set>

namespace quorvane {
namespace {

using Texts = std::vector<std::string>;
using ActivityRecords = std::vector<std::shared_ptr<ActivityRecord>>;
using Annotations = std::vector<std::shared_ptr<ProjectTimeAnnotation>>;

// --- Reports by plain walks over all objects ----------------------------------------------------------------------

bool isWanted(const Project* project, const BillingFilters& filters) {
    if (!project || (filters.projectId && *filters.projectId != project->id())) return false;
    if (filters.client == BillingClientFilter::all) return true;
    if (filters.client == BillingClientFilter::none)
        return text::trimmedWithNewlines(project->clientName().value_or("")).empty();
    return project->clientName() && *project->clientName() == filters.client;
}

bool isWanted(const ActivityRecord& record, const BillingFilters& filters) {
    if (filters.category == BillingCategoryFilter::all) return true;
    const auto category = text::trimmedWithNewlines(record.category().value_or(""));
    return filters.category == BillingCategoryFilter::none ? category.empty() : category == filters.category;
}

double closedHours(const ActivityRecord& record) {
    return record.endTime() ? std::max(0.0, (*record.endTime() - record.startTime()).count()) / 3600 : 0;
}

bool needsALook(const ActivityRecord& record) {
    return record.billingStatusValue() == BillingStatus::review || record.confidence() < 0.9 || !record.endTime();
}

/// A store in one piece, and what a report over it has to say.
struct WholeStore {
    WholeStore(ModelContext& context, DateInterval reported, bool isEndInside, const BillingFilters& filters)
        : range(reported) {
        const auto isBeforeEnd = [&](Date date) { return date < range.end || (isEndInside && date == range.end); };
        projects = context.fetch<Project>();
        for (const auto& record : context.fetch<ActivityRecord>())
            if (isWanted(record->project().get(), filters) && record->startTime() >= range.start &&
                record->startTime() <= range.end)
                inRange.push_back(record);
        std::ranges::sort(inRange, [](const auto& a, const auto& b) {
            return std::pair(b->startTime(), a->id()) < std::pair(a->startTime(), b->id());
        });
        for (const auto& record : inRange) {
            if (!isWanted(*record, filters) || !isBeforeEnd(record->startTime())) continue;
            const auto status = record->billingStatusValue();
            if (status == BillingStatus::review || status == BillingStatus::billable) billable.push_back(record);
            if (status != BillingStatus::excluded && needsALook(*record)) review.push_back(record);
        }
        for (const auto& annotation : context.fetch<ProjectTimeAnnotation>())
            if (isWanted(annotation->project().get(), filters) && annotation->endTime() > range.start &&
                annotation->startTime() <= range.end)
                reachingIn.push_back(annotation);
        if (filters.category == BillingCategoryFilter::all)
            std::ranges::copy_if(reachingIn, std::back_inserter(assigned),
                                 [&](const auto& annotation) { return isBeforeEnd(annotation->startTime()); });
    }

    [[nodiscard]] double clippedHours(const ProjectTimeAnnotation& annotation) const {
        const Seconds clipped =
            std::min(range.end, annotation.endTime()) - std::max(range.start, annotation.startTime());
        return std::max(0.0, clipped.count()) / 3600;
    }

    [[nodiscard]] std::vector<BillingReportRow> rows() const {
        std::vector<BillingReportRow> rows;
        for (const auto& project : projects) {
            BillingReportRow row{.id = project->id(),
                                 .projectName = project->name(),
                                 .clientName = project->clientName().value_or(""),
                                 .hourlyRate = project->hourlyRate(),
                                 .currencyCode = project->currencyCode()};
            for (const auto& record : billable) {
                if (record->project() != project) continue;
                ++row.recordCount;
                row.hours += closedHours(*record);
                if (needsALook(*record)) row.reviewHours += closedHours(*record);
            }
            for (const auto& annotation : assigned) {
                if (annotation->project() != project) continue;
                ++row.recordCount;
                row.hours += clippedHours(*annotation);
            }
            if (row.recordCount > 0) rows.push_back(row);
        }
        return rows;
    }

    [[nodiscard]] std::vector<BillingDayBreakdown> days(const Calendar& calendar) const {
        std::set<Date> starts;
        for (const auto& record : billable)
            starts.insert(calendar.startOfDay(record->startTime()));
        for (const auto& annotation : assigned)
            starts.insert(calendar.startOfDay(annotation->startTime()));
        std::vector<BillingDayBreakdown> days;
        for (const Date start : starts)
            days.push_back(day(start, calendar));
        return days;
    }

    [[nodiscard]] BillingDayBreakdown day(Date start, const Calendar& calendar) const {
        BillingDayBreakdown day{.date = start};
        std::set<std::string> names;
        std::set<std::string> summaries;
        const auto firstFour = [&] {
            day.activitySummaries.assign(summaries.begin(), summaries.end());
            if (summaries.size() > 4) day.activitySummaries.resize(4);
        };
        for (const auto& record : billable) {
            if (calendar.startOfDay(record->startTime()) != start) continue;
            day.hours += closedHours(*record);
            if (needsALook(*record)) day.reviewHours += closedHours(*record);
            day.amount += closedHours(*record) * record->project()->hourlyRate();
            names.insert(record->project()->name());
            const auto app = record->appName().value_or("");
            summaries.insert(app.empty() ? record->category().value_or("") : app);
        }
        summaries.erase("");
        firstFour();
        summaries = {day.activitySummaries.begin(), day.activitySummaries.end()};
        for (const auto& annotation : assigned) {
            if (calendar.startOfDay(annotation->startTime()) != start) continue;
            day.hours += clippedHours(*annotation);
            day.amount += clippedHours(*annotation) * annotation->project()->hourlyRate();
            names.insert(annotation->project()->name());
            summaries.insert("Assigned by hand: " + annotation->project()->name());
        }
        firstFour();
        day.projectNames.assign(names.begin(), names.end());
        return day;
    }

    DateInterval range;
    std::vector<std::shared_ptr<Project>> projects;
    ActivityRecords inRange;  ///< of wanted projects, whatever the category; newest first
    ActivityRecords billable;
    ActivityRecords review;
    Annotations reachingIn;
    Annotations assigned;
};

// --- What is compared ---------------------------------------------------------------------------------------------

/// Rows or days, apart by kind: numbers are added up in different orders.
struct Figures {
    Texts texts;
    std::vector<double> numbers;
};

/// By id, as nearly equal rows may stand either way.
Figures figuresOf(std::vector<BillingReportRow> rows) {
    std::ranges::sort(rows, {}, &BillingReportRow::id);
    Figures figures;
    for (const auto& row : rows) {
        figures.texts.push_back(fmt::format("{} {}, {}: {} items, {} {}", row.id.string(), row.projectName,
                                            row.clientName, row.recordCount, row.currencyCode, row.hourlyRate));
        figures.numbers.insert(figures.numbers.end(), {row.hours, row.reviewHours, row.amount()});
    }
    return figures;
}

Figures figuresOf(const std::vector<BillingDayBreakdown>& days) {
    Figures figures;
    for (const auto& day : days) {
        figures.texts.push_back(fmt::format("{}: {}; {}", describe(day.date), fmt::join(day.projectNames, ","),
                                            fmt::join(day.activitySummaries, ",")));
        figures.numbers.insert(figures.numbers.end(), {day.hours, day.reviewHours, day.amount});
    }
    return figures;
}

void expectSame(const Figures& actual, const Figures& expected) {
    EXPECT_EQ(actual.texts, expected.texts);
    EXPECT_THAT(actual.numbers, testing::Pointwise(testing::DoubleNear(1e-9), expected.numbers));
}

/// Of entities or light rows; their other fields show in rows and days.
Texts idsOf(const auto& items) {
    Texts ids;
    for (const auto& item : items) {
        if constexpr (requires { item->id(); })
            ids.push_back(item->id().string());
        else
            ids.push_back(item.id.string());
    }
    return ids;
}

bool isBefore(const BillingReportRow& a, const BillingReportRow& b) {
    if (a.amount() != b.amount()) return a.amount() > b.amount();
    return a.hours != b.hours ? a.hours > b.hours : a.id < b.id;
}

/// Reads the store in both ways, the report over a connection of its own. How many rows it has comes back.
std::size_t expectSameReport(TemporaryStore& store, const BillingReportRange& range, const BillingFilters& filters,
                             Date now, const Calendar& calendar) {
    const auto connection = store.anotherContext();
    const auto report = makeBillingReport(*connection, range, filters, now, calendar, Localization("en"));
    const WholeStore whole(store.context(), {rangeStart(range, now, calendar), rangeEnd(range, now, calendar)},
                           isEndInside(range), filters);
    EXPECT_EQ(idsOf(report.ledger.records()), idsOf(whole.inRange));
    EXPECT_THAT(idsOf(report.ledger.annotations()), testing::UnorderedElementsAreArray(idsOf(whole.reachingIn)));
    EXPECT_EQ(idsOf(report.billable), idsOf(whole.billable));
    EXPECT_EQ(idsOf(report.review), idsOf(whole.review));
    expectSame(figuresOf(report.rows), figuresOf(whole.rows()));
    EXPECT_TRUE(std::ranges::is_sorted(report.rows, isBefore));
    expectSame(figuresOf(report.days), figuresOf(whole.days(calendar)));
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
    struct Row {
        BillingFilters filters;
        std::string expected;
    };
    const Row rows[] = {
        {{}, "First 3 1 300"}, {{.projectId = first->id()}, "First 3 1 300"}, {{.client = "ACME"}, "First 2 0 200"}};
    const auto day = BillingReportRange::fromKind(BillingReportRangeKind::custom, at("12:00:00"), at("12:00:00"));
    for (const Row& row : rows) {
        const auto report = makeBillingReport(store.context(), day, row.filters, at("12:00:00"),
                                              Calendar("en_US", "UTC"), Localization("en"));
        ASSERT_EQ(report.rows.size(), 1U);
        const auto& only = report.rows.front();
        EXPECT_EQ(fmt::format("{} {} {} {}", only.projectName, only.hours, only.reviewHours, only.amount()),
                  row.expected);
    }
}

}  // namespace
}  // namespace quorvane
