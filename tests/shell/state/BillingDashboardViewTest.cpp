#include "shell/state/BillingDashboardView.h"

#include "support/Mapped.h"
#include "support/StoreTest.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

using Texts = std::vector<std::string>;
constexpr auto review = BillingStatus::review;
constexpr auto billable = BillingStatus::billable;
constexpr auto nonBillable = BillingStatus::nonBillable;
constexpr auto excluded = BillingStatus::excluded;

/// The dashboard on Monday, 30 March 2026, at noon. Time is recorded on Monday, 2 March, unless a test says otherwise.
class BillingDashboardViewTest : public StoreTest {
protected:
    BillingDashboardViewTest() : StoreTest("2026-03-30 12:00:00") {}

    std::shared_ptr<Project> project(const char* name, double rate, const char* currency = "USD",
                                     const char* client = "") {
        auto made = insertProject(context(), name, rate);
        made->currencyCode = std::string(currency);
        if (*client != '\0') made->clientName = std::optional<std::string>(client);
        return made;
    }
    std::shared_ptr<ActivityRecord> record(const std::shared_ptr<Project>& project, const char* from, const char* to,
                                           BillingStatus status = billable, double confidence = 1) {
        auto builder = aRecord().from(from).app("Editor").status(status).project(project);
        if (*to != '\0') builder.to(to);
        auto made = builder.in(context());
        made->confidence = confidence;
        return made;
    }

    Texts stepValues() {
        return mapped(dashboard.checkoutSteps(), [](const auto& card) {
            return fmt::format("{}|{}|{}", card.value, card.caption, card.systemImage);
        });
    }
    Texts metricValues() {
        return mapped(dashboard.metrics(), [](const auto& card) { return card.value + "|" + card.caption; });
    }
    Texts lines() {
        return mapped(dashboard.tableRows(), [](const auto& row) {
            return fmt::format("{}|{}|{}|{}|{}|{}", row.projectName, row.clientName, row.hours, row.reviewHours,
                               row.hourlyRate, row.amount);
        });
    }
    static std::string firstLine(const std::string& text) { return text.substr(0, text.find('\n')); }
    static Texts labels(const std::vector<BillingDashboardView::Choice>& choices) {
        return mapped(choices, &BillingDashboardView::Choice::label);
    }

    Texts told;  ///< what the actions asked for
    std::vector<std::shared_ptr<ActivityRecord>> queue;
    BillingMarkdownDocument document;
    BillingDashboardView dashboard{
        store.container(),
        runLoop,
        localization,
        console,
        {.copyText = [this](const auto& text) { told.push_back("copy " + firstLine(text)); },
         .showCopyConfirmation = [this](const auto& title, const auto& text) { told.push_back(title + ": " + text); },
         .showBillingPreview =
             [this](const auto& pack, const auto& email) {
                 told.push_back("preview " + firstLine(pack) + " / " + firstLine(email));
             },
         .showReportExporter =
             [this](const auto& pack, const auto& name) {
                 document = pack;
                 told.push_back("export " + name);
             },
         .showExportReviewWarning = [this](std::size_t count) { told.push_back(fmt::format("warn {}", count)); },
         .showReviewQueue = [this](const auto& records) { queue = records; },
         .editProject = [this](const auto& edited) { told.push_back("edit " + edited->name()); }}};
};

TEST_F(BillingDashboardViewTest, FiguresAreTheMonthsAcrossRecordsAndTimeGivenByHand) {
    const auto web = project("Web", 92, "EUR", "Orchard & Co.");
    const auto chores = project("Chores", 0);
    const auto app = project("App", 64.5, "USD", "ACME");
    record(web, "09:00:00", "11:00:00");
    record(web, "11:00:00", "12:30:00", review);
    record(chores, "13:00:00", "14:00:00");
    record(chores, "14:00:00", "15:00:00", excluded);
    record(app, "2026-02-28 09:00:00", "2026-02-28 19:00:00");
    assign(app, "2026-02-28 23:00:00", "2026-03-01 01:00:00");
    assign(web, "15:00:00", "15:30:00");
    EXPECT_THAT(lines(),
                ElementsAre("Web|Orchard & Co.|4.0 h|1.5 h|€92.00|€368.00", "App|ACME|1.0 h|0.0 h|$64.50|$64.50",
                            "Chores|Not set|1.0 h|0.0 h|Not set|Not set"));
    EXPECT_THAT(stepValues(),
                ElementsAre("All clients|This month|people", "1.5 h|of this time still needs a look|review-mag",
                            "Export Bill|A Markdown document, ready to send|doc"));
    // Amounts are added up as bare numbers under the first rate's currency.
    EXPECT_THAT(metricValues(), ElementsAre("6.0 h|in 3 projects", "5.0 h|in projects with an hourly rate",
                                            "€432.50|includes 1.5 h still to review"));
    EXPECT_EQ(dashboard.scopeCaption(), "In this bill: This month");
    EXPECT_EQ(dashboard.reviewCount(), 1U);
}

TEST_F(BillingDashboardViewTest, WithoutRowsThereIsNothingToHandOver) {
    EXPECT_THAT(stepValues(), ElementsAre("All clients|This month|people", "0.0 h|Everything is settled|seal",
                                          "Export Bill|A Markdown document, ready to send|doc"));
    EXPECT_THAT(metricValues(), ElementsAre("0.0 h|in no project", "0.0 h|in projects with an hourly rate",
                                            "$0.00|with nothing left to review"));
    record(project("Web", 10), "09:00:00", "", nonBillable);  // waits for a look, but makes no row
    EXPECT_EQ(dashboard.reviewCount(), 1U);
    dashboard.previewPack();
    dashboard.copyEmail();
    dashboard.copySocialPost();
    dashboard.exportPack();
    dashboard.continueExport();
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(BillingDashboardViewTest, FiltersNarrowEveryFigureAndTheCategoryShowsInTheScope) {
    const auto web = project("Web", 100, "EUR", "ACME");
    const auto own = project("Own", 50, "USD", " \n");
    record(web, "09:00:00", "10:00:00")->category = std::optional<std::string>(" Writing ");
    record(own, "13:00:00", "16:00:00");
    record(own, "2026-03-30 08:00:00", "2026-03-30 09:00:00");
    assign(web, "17:00:00", "18:00:00");
    const auto custom = [&] {
        dashboard.setReportRangeKind(BillingReportRangeKind::custom);
        dashboard.setCustomStart(at("20:00:00"));
        dashboard.setCustomEnd(at("00:00:00"));
    };
    const std::tuple<std::function<void()>, Texts, const char*> rows[] = {
        {[] {}, {"$200.00", "€200.00"}, "All clients|This month"},
        {[&] { dashboard.setSelectedProjectId(own->id()); }, {"$200.00"}, "All clients|This month"},
        {[&] { dashboard.setSelectedClientName("ACME"); }, {"€200.00"}, "ACME|This month"},
        {[&] { dashboard.setSelectedClientName("__no_client__"); }, {"$200.00"}, "Not set|This month"},
        {[&] { dashboard.setSelectedCategory("Writing"); }, {"€100.00"}, "All clients|This month · Writing"},
        {[&] { dashboard.setSelectedCategory("__no_category__"); },
         {"$200.00"},
         "All clients|This month · No category"},
        {[&] { dashboard.setReportRangeKind(BillingReportRangeKind::week); }, {"$50.00"}, "All clients|This week"},
        {custom, {"€200.00", "$150.00"}, "All clients|Mar 2, 2026 — Mar 2, 2026"}};
    for (const auto& [choose, amounts, scope] : rows) {
        SCOPED_TRACE(scope);
        dashboard.setReportRangeKind(BillingReportRangeKind::month);
        dashboard.setSelectedProjectId(std::nullopt);
        dashboard.setSelectedClientName("__all_clients__");
        dashboard.setSelectedCategory("__all_categories__");
        choose();
        EXPECT_EQ(mapped(dashboard.tableRows(), [](const auto& line) { return line.amount; }), amounts);
        EXPECT_THAT(stepValues().front(), StartsWith(scope));
    }
}

TEST_F(BillingDashboardViewTest, PickersOfferWhatTheStoreHoldsAndKeepWhatIsChosen) {
    const auto web = project("web", 1, "USD", " ACME ");
    project("Äpfel", 1, "USD", "ACME");
    record(web, "09:00:00", "10:00:00")->category = std::optional<std::string>("Writing ");
    record(nullptr, "10:00:00", "11:00:00")->category = std::optional<std::string>("Design");
    record(nullptr, "2023-01-01 10:00:00", "2023-01-01 11:00:00")->category = std::optional<std::string>("Long ago");
    dashboard.appear();
    runLoop.runPosted();
    EXPECT_THAT(labels(dashboard.rangeChoices()),
                ElementsAre("This week", "This month", "Last 90 days", "Custom range"));
    EXPECT_THAT(labels(dashboard.projectChoices()), ElementsAre("All projects", "Äpfel", "web"));
    EXPECT_THAT(labels(dashboard.clientChoices()), ElementsAre("All clients", "Not set", "ACME"));
    EXPECT_THAT(labels(dashboard.categoryChoices()), ElementsAre("All categories", "No category", "Design", "Writing"));
    record(web, "11:00:00", "12:00:00")->category = std::optional<std::string>("学习");
    EXPECT_THAT(labels(dashboard.categoryChoices()),
                ElementsAre("All categories", "No category", "Design", "Learning", "Writing"));

    dashboard.setSelectedProjectId(web->id());
    dashboard.setSelectedClientName("Gone");
    context().remove(web);
    EXPECT_THAT(labels(dashboard.projectChoices()), ElementsAre("All projects", "Äpfel", "Unknown project"));
    EXPECT_THAT(labels(dashboard.clientChoices()), ElementsAre("All clients", "Not set", "ACME", "Gone"));
}

TEST_F(BillingDashboardViewTest, FiguresFollowTheStoreAndTheClockAndTellSoOnceInATurn) {
    const auto web = project("Web", 100);
    context().save();
    dashboard.appear();
    runLoop.runPosted();
    int changes = 0;
    const auto subscription = dashboard.changed.subscribe([&] { ++changes; });
    const auto added = record(web, "2026-03-30 08:00:00", "2026-03-30 09:00:00");
    assign(web, "2026-03-30 11:00:00", "2026-03-30 14:00:00");  // up to now counts
    EXPECT_THAT(metricValues().front(), "2.0 h|in 1 project");
    runLoop.runPosted();
    EXPECT_EQ(changes, 1);
    added->billingStatus = std::string("excluded");
    web->hourlyRate = 30;
    EXPECT_THAT(lines(), ElementsAre("Web|Not set|1.0 h|0.0 h|$30.00|$30.00"));
    runLoop.playFor(1800s);
    EXPECT_EQ(changes, 32);
    EXPECT_THAT(lines(), ElementsAre("Web|Not set|1.5 h|0.0 h|$30.00|$45.00"));
    dashboard.disappear();
    runLoop.playFor(1800s);
    EXPECT_EQ(changes, 32);
}

TEST_F(BillingDashboardViewTest, RecordsCountFromTwoYearsBeforeItWasOpened) {
    const auto web = project("Web", 10);
    record(web, "2024-03-30 11:59:59", "2024-03-30 13:59:59");
    record(web, "2024-03-30 12:00:00", "2024-03-30 13:00:00");
    assign(web, "2024-01-01 12:00:00", "2024-01-01 16:00:00");
    dashboard.setReportRangeKind(BillingReportRangeKind::custom);
    dashboard.setCustomStart(at("2023-06-01 00:00:00"));
    EXPECT_THAT(lines(), ElementsAre("Web|Not set|5.0 h|0.0 h|$10.00|$50.00"));
}

TEST_F(BillingDashboardViewTest, AnExportAsksWhileARecordWaitsWhateverItEarns) {
    const std::tuple<const char*, BillingStatus, double, bool, const char*> rows[] = {
        {"settled", billable, 1, false, "0.0 h"},
        {"to review", review, 1, true, "1.0 h"},
        {"unsure and not billable", nonBillable, 0.5, true, "0.0 h"},
        {"excluded", excluded, 0.5, false, "0.0 h"}};
    const std::string exported = "export Quorvane_Billing_Pack_2026-03-30_12-00-00.md";
    const auto web = project("Web", 100);
    record(web, "09:00:00", "10:00:00");
    for (const auto& [name, status, confidence, asks, reviewHours] : rows) {
        SCOPED_TRACE(name);
        const auto waiting = record(web, "13:00:00", "14:00:00", status, confidence);
        told.clear();
        dashboard.exportPack();
        EXPECT_THAT(told, ElementsAre(asks ? "warn 1" : exported));
        EXPECT_EQ(dashboard.checkoutSteps()[1].value, reviewHours);
        dashboard.continueExport();
        EXPECT_EQ(told.back(), exported);
        EXPECT_EQ(waiting->billingStatusValue(), status);  // the store is as it was
        context().remove(waiting);
    }
}

TEST_F(BillingDashboardViewTest, TheQueueHoldsTheRecordsThatWaitNewestFirst) {
    const auto web = project("Web", 100);
    record(web, "09:00:00", "10:00:00");
    const auto early = record(web, "10:00:00", "11:00:00", review, 0.5);
    const auto late = record(web, "11:00:00", "");
    record(nullptr, "12:00:00", "13:00:00", review);
    dashboard.openReviewQueue();
    EXPECT_THAT(queue, ElementsAre(late, early));
    early->setBillingStatus(billable);  // stays, as it is unsure
    late->setBillingStatus(excluded);
    dashboard.openReviewQueue();
    EXPECT_THAT(queue, ElementsAre(early));
}

TEST_F(BillingDashboardViewTest, CopiesPreviewAndEditorAreAskedFor) {
    const auto web = project("Web", 100, "EUR");
    record(web, "09:00:00", "10:00:00");
    dashboard.copyEmail();
    dashboard.copySocialPost();
    dashboard.previewPack();
    dashboard.editProject(web->id());
    dashboard.editProject(Uuid::random());
    EXPECT_THAT(told, ElementsAre("copy Hello, here is the billing summary. Client: All clients.",
                                  "Copied: The e-mail text is on the clipboard.",
                                  "copy This month: 1.0 hours of focused work on Web 1.0h, worth EUR 100.00.",
                                  "Copied: The social post is on the clipboard.",
                                  "preview # Billing report / Hello, here is the billing summary. Client: All clients.",
                                  "edit Web"));
}

TEST_F(BillingDashboardViewTest, SavesTheDocumentAndPrintsWhatWentWrong) {
    record(project("Web", 100), "09:00:00", "10:00:00");
    dashboard.exportPack();
    const TemporaryFolder folder;
    dashboard.save(document, folder / "bill.md");
    dashboard.save(document, folder / "missing" / "bill.md");
    runLoop.runPosted();
    EXPECT_EQ(contentOf(folder / "bill.md"), document.content);
    EXPECT_THAT(document.content, HasSubstr("| Web | Not set | 1.00 h |"));
    EXPECT_THAT(console.lines(), ElementsAre(HasSubstr("Export failed: ")));
}

}  // namespace
}  // namespace quorvane
