#pragma once

#include "base/Collation.h"
#include "billing/BillingReport.h"
#include "billing/TextDocuments.h"
#include "shell/state/BillingCards.h"
#include "shell/state/RecordCategories.h"
#include "store/ActivityRecord.h"
#include "store/LiveQuery.h"
#include "store/Project.h"

#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// The billing screen without its pixels: range and filters, the figures that follow from them and from the store, and
/// the way from there to a document. Figures are computed when they are read and kept until a filter, a record, an
/// annotation or a project changes, or a minute has passed. Nothing of it is stored. Nothing throws: what can't be read
/// counts as nothing and is printed. Main thread only; what it is made on outlives it.
class BillingDashboardView {
public:
    static constexpr Seconds reach{63'072'000};  ///< how far back records count: 730 days from the making of it

    /// What its actions ask for. One that is empty is passed over.
    struct Presenter {
        std::function<void(const std::string& text)> copyText;
        std::function<void(const std::string& title, const std::string& message)> showCopyConfirmation;
        std::function<void(const std::string& pack, const std::string& email)> showBillingPreview;
        /// With the name to propose. The document goes to `save`.
        std::function<void(const BillingMarkdownDocument& document, const std::string& fileName)> showReportExporter;
        /// With the number of records that wait; then `openReviewQueue`, `continueExport` or nothing.
        std::function<void(std::size_t count)> showExportReviewWarning;
        /// With the records that wait now, newest first.
        std::function<void(const std::vector<std::shared_ptr<ActivityRecord>>& records)> showReviewQueue;
        std::function<void(const std::shared_ptr<Project>& project)> editProject;
    };

    /// One entry of a picker.
    struct Choice {
        std::string value;
        std::string label;
        friend bool operator==(const Choice&, const Choice&) = default;
    };

    BillingDashboardView(ModelContainer& store, platform::RunLoop& runLoop, const Localization& localization,
                         ConsoleSink& console, Presenter presenter);
    BillingDashboardView(const BillingDashboardView&) = delete;
    BillingDashboardView& operator=(const BillingDashboardView&) = delete;

    /// It is on screen: figures are read anew, now and every minute, as open ranges end at the present instant.
    void appear();
    /// It is no longer on screen: what it has read is let go.
    void disappear();

    // Filters
    [[nodiscard]] BillingReportRangeKind reportRangeKind() const { return reportRangeKind_; }
    [[nodiscard]] Date customStart() const { return customStart_; }
    [[nodiscard]] Date customEnd() const { return customEnd_; }
    [[nodiscard]] const BillingFilters& filters() const { return filters_; }
    void setReportRangeKind(BillingReportRangeKind kind);
    void setCustomStart(Date start);
    void setCustomEnd(Date end);
    void setSelectedProjectId(const std::optional<Uuid>& project);
    void setSelectedClientName(const std::string& client);
    void setSelectedCategory(const std::string& category);

    // Pickers. What is chosen is always among the entries, even if the store no longer has it.
    [[nodiscard]] std::vector<Choice> rangeChoices() const;    ///< by raw value
    [[nodiscard]] std::vector<Choice> projectChoices() const;  ///< by id, empty for all
    [[nodiscard]] std::vector<Choice> clientChoices();
    [[nodiscard]] std::vector<Choice> categoryChoices() const;
    /// All, as the user's language orders their names.
    [[nodiscard]] std::vector<std::shared_ptr<Project>> projects() const;

    // Figures
    [[nodiscard]] BillingReportRange range() const;
    [[nodiscard]] const std::vector<BillingReportRow>& rows();
    [[nodiscard]] std::size_t reviewCount();
    [[nodiscard]] bool canBill() { return !rows().empty(); }
    [[nodiscard]] std::string scopeCaption() const;
    [[nodiscard]] std::array<CheckoutStepCard, 3> checkoutSteps();
    [[nodiscard]] std::array<BillingMetricCard, 3> metrics();
    [[nodiscard]] std::vector<BillingTableRow> tableRows();

    // Actions; without rows the ones that make a text do nothing
    void previewPack();
    void copyEmail();
    void copySocialPost();
    void exportPack();  ///< asks first while records wait
    void continueExport();
    void openReviewQueue();
    void editProject(const Uuid& project);
    /// Writes the document beside the main thread; the file appears whole or not at all. A failure is printed.
    void save(const BillingMarkdownDocument& document, const std::filesystem::path& file);

    Signal<> changed;  ///< figures, filters or pickers may have others now; once in a turn of the loop

private:
    const std::optional<BillingReport>& report();
    void invalidate();
    void follow(const EntityChange& change);
    [[nodiscard]] std::string pack();
    [[nodiscard]] std::string email();
    void copy(const std::string& text, const std::string& message);
    [[nodiscard]] std::vector<std::shared_ptr<ActivityRecord>> reviewRecords();

    ModelContext& context_;
    platform::RunLoop& runLoop_;
    const Localization& localization_;
    ConsoleSink& console_;
    Presenter presenter_;
    Collation collation_;
    Date earliest_;  ///< fixed when the screen is made
    BillingReportRangeKind reportRangeKind_ = BillingReportRangeKind::month;
    Date customStart_;
    Date customEnd_;
    BillingFilters filters_;
    LiveQuery<Project> projects_;
    RecordCategories categories_;
    std::optional<BillingReport> report_;
    bool isCurrent_ = false;
    bool isChangePosted_ = false;
    std::unique_ptr<platform::Timer> timer_;
    Subscription storeChanged_;
    Subscription categoriesChanged_;
    WeakSource<BillingDashboardView> weak_{*this};  // last: dies first, so that no callback meets half a screen
};

}  // namespace quorvane
