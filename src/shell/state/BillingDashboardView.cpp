#include "shell/state/BillingDashboardView.h"

#include "base/AtomicFile.h"
#include "billing/BillingPack.h"
#include "platform/Clock.h"
#include "platform/InBackground.h"
#include "store/ProjectTimeAnnotation.h"
#include "store/StoreError.h"

#include <algorithm>
#include <utility>

namespace quorvane {
namespace {

constexpr int defaultDays = 7;
constexpr Seconds clockStep = 60s;

using Choices = std::vector<BillingDashboardView::Choice>;

/// Adds what is chosen where the store no longer has it.
void keep(Choices& choices, const std::string& value, const std::string& label) {
    if (std::none_of(choices.begin(), choices.end(), [&](const auto& choice) { return choice.value == value; }))
        choices.push_back({value, label});
}

template <class... Arguments, class... Values>
void tell(const std::function<void(Arguments...)>& hook, const Values&... values) {
    if (hook) hook(values...);
}

}  // namespace

BillingDashboardView::BillingDashboardView(ModelContainer& store, platform::RunLoop& runLoop,
                                           const Localization& localization, ConsoleSink& console, Presenter presenter)
    : context_(store.mainContext()), runLoop_(runLoop), localization_(localization), console_(console),
      presenter_(std::move(presenter)), collation_(std::string(localization.language())),
      earliest_(platform::currentDate() - reach),
      customStart_(Calendar::current().addingDays(-defaultDays, platform::currentDate())),
      customEnd_(platform::currentDate()), projects_(context_, {.sort = {ascending(&Project::name)}}),
      categories_(store, runLoop, console, earliest_) {
    storeChanged_ = context_.didChange.subscribe([this](const EntityChange& change) { follow(change); });
    categoriesChanged_ = categories_.changed.subscribe([this] { invalidate(); });
}

void BillingDashboardView::appear() {
    timer_ = runLoop_.every(clockStep, [weak = weak_.handle()] {
        if (auto* const self = weak.get()) self->invalidate();
    });
    categories_.refresh();
    invalidate();
}

void BillingDashboardView::disappear() {
    timer_.reset();
    report_.reset();
    isCurrent_ = false;
}

// ---- Filters

void BillingDashboardView::setReportRangeKind(BillingReportRangeKind kind) {
    reportRangeKind_ = kind;
    invalidate();
}

void BillingDashboardView::setCustomStart(Date start) {
    customStart_ = start;
    invalidate();
}

void BillingDashboardView::setCustomEnd(Date end) {
    customEnd_ = end;
    invalidate();
}

void BillingDashboardView::setSelectedProjectId(const std::optional<Uuid>& project) {
    filters_.projectId = project;
    invalidate();
}

void BillingDashboardView::setSelectedClientName(const std::string& client) {
    filters_.client = client;
    invalidate();
}

void BillingDashboardView::setSelectedCategory(const std::string& category) {
    filters_.category = category;
    invalidate();
}

Choices BillingDashboardView::rangeChoices() const {
    Choices choices;
    for (const auto& [kind, value] : RawValues<BillingReportRangeKind>::table)
        choices.push_back({std::string(value), label(kind, localization_)});
    return choices;
}

std::vector<std::shared_ptr<Project>> BillingDashboardView::projects() const {
    auto sorted = projects_.results();
    std::stable_sort(sorted.begin(), sorted.end(),
                     [this](const auto& a, const auto& b) { return collation_.comesBefore(a->name(), b->name()); });
    return sorted;
}

Choices BillingDashboardView::projectChoices() const {
    Choices choices{{"", localization_.text("all_projects")}};
    for (const auto& project : projects())
        choices.push_back({project->id().string(), project->name()});
    if (filters_.projectId) keep(choices, filters_.projectId->string(), localization_.text("unknown_project"));
    return choices;
}

Choices BillingDashboardView::clientChoices() {
    const std::string all(BillingClientFilter::all);
    const std::string none(BillingClientFilter::none);
    Choices choices{{all, clientLabel(all, localization_)}, {none, clientLabel(none, localization_)}};
    if (const auto& current = report())
        for (const std::string& client : current->clients)
            choices.push_back({client, client});
    keep(choices, filters_.client, filters_.client);
    return choices;
}

Choices BillingDashboardView::categoryChoices() const {
    const std::string all(BillingCategoryFilter::all);
    const std::string none(BillingCategoryFilter::none);
    Choices choices{{all, categoryLabel(all, localization_)}, {none, categoryLabel(none, localization_)}};
    const auto first = static_cast<std::ptrdiff_t>(choices.size());
    for (const std::string& name : categories_.names())
        choices.push_back({name, categoryLabel(name, localization_)});
    std::stable_sort(choices.begin() + first, choices.end(),
                     [this](const Choice& a, const Choice& b) { return collation_.comesBefore(a.label, b.label); });
    keep(choices, filters_.category, categoryLabel(filters_.category, localization_));
    return choices;
}

// ---- Figures

BillingReportRange BillingDashboardView::range() const {
    return BillingReportRange::fromKind(reportRangeKind_, customStart_, customEnd_);
}

const std::optional<BillingReport>& BillingDashboardView::report() {
    if (std::exchange(isCurrent_, true)) return report_;
    report_.reset();
    try {
        report_.emplace(makeBillingReport(context_, range(), filters_, platform::currentDate(), Calendar::current(),
                                          localization_, earliest_));
    } catch (const StoreError& error) {
        console_.line("BillingDashboardView: Failed to read the report: {}", error.what());
    }
    return report_;
}

const std::vector<BillingReportRow>& BillingDashboardView::rows() {
    static const std::vector<BillingReportRow> none;
    const auto& current = report();
    return current ? current->rows : none;
}

std::size_t BillingDashboardView::reviewCount() {
    const auto& current = report();
    return current ? current->review.size() : 0;
}

std::string BillingDashboardView::scopeCaption() const {
    return localization_.text("checkout_scope_caption", BillingCards::scopeCaption(range(), filters_, localization_));
}

std::array<CheckoutStepCard, 3> BillingDashboardView::checkoutSteps() {
    return BillingCards::checkoutSteps(rows(), range(), filters_, localization_);
}

std::array<BillingMetricCard, 3> BillingDashboardView::metrics() {
    return BillingCards::metrics(rows(), localization_);
}

std::vector<BillingTableRow> BillingDashboardView::tableRows() {
    std::vector<BillingTableRow> lines;
    lines.reserve(rows().size());
    for (const BillingReportRow& row : rows()) {
        const auto& stored = projects_.results();
        const auto found =
            std::find_if(stored.begin(), stored.end(), [&](const auto& project) { return project->id() == row.id; });
        const std::string color = found == stored.end() ? "" : (*found)->color().value_or("");
        lines.push_back(BillingCards::tableRow(row, color, localization_));
    }
    return lines;
}

void BillingDashboardView::follow(const EntityChange& change) {
    const auto* const kind = &change.entity->entityDescription();
    if (kind == &ActivityRecord::description() || kind == &ProjectTimeAnnotation::description() ||
        kind == &Project::description())
        invalidate();
}

// Whoever reads meanwhile gets the present figures; the screen hears of a whole turn's changes at once.
void BillingDashboardView::invalidate() {
    isCurrent_ = false;
    if (std::exchange(isChangePosted_, true)) return;
    runLoop_.post([weak = weak_.handle()] {
        auto* const self = weak.get();
        if (self == nullptr) return;
        self->isChangePosted_ = false;
        self->changed.send();
    });
}

// ---- Actions. What leaves the screen is computed at the moment of leaving, and the screen follows.

std::string BillingDashboardView::pack() {
    const auto& current = report();
    if (!current) return {};
    return BillingPack::makeMarkdownReport(current->rows, current->days, current->range, filters_, current->now,
                                           localization_);
}

std::string BillingDashboardView::email() {
    return BillingPack::makeEmailBody(rows(), range(), filters_.client, localization_);
}

void BillingDashboardView::previewPack() {
    invalidate();
    if (canBill()) tell(presenter_.showBillingPreview, pack(), email());
}

void BillingDashboardView::copyEmail() {
    invalidate();
    if (canBill()) copy(email(), localization_.text("billing_email_copied_message"));
}

void BillingDashboardView::copySocialPost() {
    invalidate();
    if (canBill())
        copy(BillingPack::makeSocialPost(rows(), range(), localization_),
             localization_.text("billing_social_post_copied_message"));
}

void BillingDashboardView::copy(const std::string& text, const std::string& message) {
    tell(presenter_.copyText, text);
    tell(presenter_.showCopyConfirmation, localization_.text("billing_content_copied_title"), message);
}

void BillingDashboardView::exportPack() {
    invalidate();
    if (!canBill()) return;
    if (reviewCount() == 0) return continueExport();
    tell(presenter_.showExportReviewWarning, reviewCount());
}

void BillingDashboardView::continueExport() {
    if (canBill())
        tell(presenter_.showReportExporter, BillingMarkdownDocument{pack()},
             BillingPack::billingPackFileName(platform::currentDate()));
}

void BillingDashboardView::openReviewQueue() {
    invalidate();
    tell(presenter_.showReviewQueue, reviewRecords());
}

std::vector<std::shared_ptr<ActivityRecord>> BillingDashboardView::reviewRecords() {
    std::vector<std::shared_ptr<ActivityRecord>> records;
    const auto& current = report();
    if (!current) return records;
    records.reserve(current->review.size());
    try {
        for (const BillingRecord& waiting : current->review)
            for (auto& record :
                 context_.fetch<ActivityRecord>({.predicate = field(&ActivityRecord::id) == waiting.id, .limit = 1}))
                records.push_back(std::move(record));
    } catch (const StoreError& error) {
        console_.line("BillingDashboardView: Failed to fetch ActivityRecords: {}", error.what());
    }
    return records;
}

void BillingDashboardView::editProject(const Uuid& id) {
    const auto& stored = projects_.results();
    const auto found =
        std::find_if(stored.begin(), stored.end(), [&](const auto& project) { return project->id() == id; });
    if (found != stored.end()) tell(presenter_.editProject, std::shared_ptr<Project>(*found));
}

void BillingDashboardView::save(const BillingMarkdownDocument& document, const std::filesystem::path& file) {
    platform::inBackground(
        runLoop_,
        [bytes = document.bytes(), file]() -> std::optional<std::string> {
            try {
                writeFileAtomically(file, bytes);
                return std::nullopt;
            } catch (const FileError& error) {
                return error.what();
            }
        },
        [weak = weak_.handle()](std::future<std::optional<std::string>> outcome) {
            auto* const self = weak.get();
            const auto error = outcome.get();
            if (self != nullptr && error)
                self->console_.line("{}: {}", self->localization_.text("export_failed"), *error);
        });
}

}  // namespace quorvane
