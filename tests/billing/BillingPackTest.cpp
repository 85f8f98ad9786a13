#include "billing/BillingPack.h"

#include "support/Builders.h"
#include "support/TemporaryFolder.h"

#include <cstdlib>
#include <gmock/gmock.h>

namespace quorvane {
namespace {

BillingReportRow aRow(std::string name, std::string client, double hours, double reviewHours, double hourlyRate,
                      std::string currencyCode) {
    return {.projectName = std::move(name),
            .clientName = std::move(client),
            .hours = hours,
            .reviewHours = reviewHours,
            .hourlyRate = hourlyRate,
            .currencyCode = std::move(currencyCode)};
}

/// A user in Berlin, whatever the language.
class BillingPackTest : public testing::Test {
protected:
    BillingPackTest() { setenv("TZ", "Europe/Berlin", 1); }
    ~BillingPackTest() override {
        setenv("TZ", "UTC", 1);
        setenv("LC_ALL", "en_US.UTF-8", 1);
    }

    const Date now = at("2026-03-04T15:00:00Z");
};

TEST_F(BillingPackTest, DocumentsReadAsTheirFilesDo) {
    struct Row {
        const char* name;
        const char* language;
        BillingReportRange range;
        BillingFilters filters;
        std::vector<BillingReportRow> rows;
        std::vector<BillingDayBreakdown> days;
        std::string post;
    };
    const Date monday = at("2026-03-01T23:00:00Z");  // midnight in Berlin
    const Date tuesday = at("2026-03-02T23:00:00Z");
    const BillingReportRange quarter{.kind = BillingReportRangeKind::quarter};
    const BillingFilters filters{.client = "ACME|Co", .category = "Design|UX"};
    // The hours of Chores lie halfway between two decimals, those of 咖啡馆 a little below.
    const std::vector<BillingReportRow> seven = {aRow("Web|App", "ACME|Co", 10.5, 2.25, 100, "EUR"),
                                                 aRow("חשבונות", "דוד", 4, 0, 80, "USD"),
                                                 aRow("تطبيق", "", 3.333, 0, 60, "EUR"),
                                                 aRow("咖啡馆", "星光", 1.005, 0, 10, "USD"),
                                                 aRow("Chores", "", 0.125, 0.125, 0, "JPY"),
                                                 aRow("Refund", "ACME", 1, 0, -5, "USD"),
                                                 aRow("Mail", "", 0.25, 0, 0, "USD")};
    const std::vector<BillingDayBreakdown> days = {
        {monday, 12, 2.25, 1200, {"Web|App", "חשבונות"}, {"Editor", "vim|tmux", "社交"}}, {.date = tuesday}};
    const Row rows[] = {
        {"seven-projects", "en", quarter, filters, seven, days,
         "Last 90 days: 20.2 hours of focused work on Web|App 10.5h / חשבונות 4.0h / تطبيق 3.3h, worth EUR 1575.03."},
        {"seven-projects", "zh", quarter, filters, seven, days,
         "最近 90 天：专注工作 20.2 小时（Web|App 10.5h / חשבונות 4.0h / تطبيق 3.3h），可结算 EUR 1575.03。"},
        {"assigned-by-hand",
         "zh",
         BillingReportRange::fromKind(BillingReportRangeKind::custom, monday, tuesday),
         {.client = std::string(BillingClientFilter::none)},
         {aRow("自习", "", 0.25, 0, 0, "GBP")},
         {{monday, 0.25, 0, 0, {"自习"}, {"手动分配：自习"}}},
         "2026年3月2日 — 2026年3月3日：专注工作 0.2 小时（自习 0.2h）。"},
        {"nothing",
         "en",
         {.kind = BillingReportRangeKind::week},
         {.category = std::string(BillingCategoryFilter::none)},
         {},
         {},
         "This week: 0.0 hours of focused work on Unknown project."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.name) + " " + row.language);
        const Localization words(row.language);
        setenv("LC_ALL", words.language() == "zh" ? "zh_CN.UTF-8" : "en_US.UTF-8", 1);
        const std::string file = std::string(QUORVANE_BILLING_DATA "/") + row.name + "." + row.language;
        EXPECT_EQ(BillingPack::makeMarkdownReport(row.rows, row.days, row.range, row.filters, now, words) + "\n",
                  contentOf(file + ".md"));
        EXPECT_EQ(BillingPack::makeEmailBody(row.rows, row.range, row.filters.client, words) + "\n",
                  contentOf(file + ".txt"));
        EXPECT_EQ(BillingPack::makeSocialPost(row.rows, row.range, words), row.post);
    }
}

TEST(BillingPackFileNameTest, BearsTheInstant) {
    EXPECT_EQ(BillingPack::billingPackFileName(at("2026-03-04T15:00:00.9Z")),
              "Quorvane_Billing_Pack_2026-03-04_15-00-00.md");
}

}  // namespace
}  // namespace quorvane
