#include "shell/window/BillingSheets.h"

#include "billing/BillingPack.h"
#include "platform/Clock.h"
#include "shell/app/AppServices.h"
#include "shell/billing/BillingPackPreviewSheet.h"
#include "shell/billing/BillingReviewQueueSheet.h"
#include "shell/billing/ProjectBillingEditorSheet.h"
#include "shell/look/Sheet.h"
#include "store/Autosave.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace quorvane::BillingSheets {
namespace {

constexpr Seconds saveDelay = 0.5s;

using Records = std::vector<std::shared_ptr<ActivityRecord>>;

/// While the sheet is open, what it changes is saved by and by.
void saveWhileOpen(Sheet& sheet, AppServices& services) {
    auto autosave = std::make_shared<Autosave>(
        services.runLoop, services.context, saveDelay,
        [&console = services.console](const StoreError& error) { console.write(error.what()); });
    QObject::connect(&sheet, &QObject::destroyed, [kept = std::move(autosave)]() mutable { kept.reset(); });
}

void openReviewQueue(BillingPage& page, AppServices& services, const Records& records) {
    auto queue = std::make_unique<BillingReviewQueueView>(services.context, records, page.dashboard().projects(),
                                                          services.localization);
    saveWhileOpen(BillingReviewQueueSheet::open(*page.window(), std::move(queue), services.localization), services);
}

/// What the page shows of the project.
std::optional<ProjectBillingEditorSheet::Figures> figuresOf(const Project& project, BillingDashboardView& dashboard,
                                                            const Localization& localization) {
    const auto& rows = dashboard.rows();
    const auto row = std::ranges::find(rows, project.id(), &BillingReportRow::id);
    if (row == rows.end()) return std::nullopt;
    return ProjectBillingEditorSheet::Figures{.rangeLabel = rangeLabel(dashboard.range(), localization),
                                              .hours = row->hours};
}

void openProjectEditor(BillingPage& page, AppServices& services, const std::shared_ptr<Project>& project) {
    auto& sheet = ProjectBillingEditorSheet::open(*page.window(), std::make_unique<ProjectBillingEditor>(project),
                                                  figuresOf(*project, page.dashboard(), services.localization),
                                                  services.localization);
    saveWhileOpen(sheet, services);
}

void openPreview(BillingPage& page, const AppServices& services, const std::string& pack, const std::string& email) {
    BillingPackPreviewSheet::open(
        *page.window(),
        {.markdown = pack, .emailBody = email, .fileName = BillingPack::billingPackFileName(platform::currentDate())},
        services.localization);
}

}  // namespace

BillingPage* makePage(AppServices& services) {
    // The sheets need the page, which is made with what opens them.
    auto page = std::make_shared<BillingPage*>(nullptr);
    *page = new BillingPage(
        {.store = services.container,
         .runLoop = services.runLoop,
         .localization = services.localization,
         .console = services.console},
        {.openReviewQueue = [page, &services](const Records& records) { openReviewQueue(**page, services, records); },
         .openProjectEditor = [page, &services](const auto& project) { openProjectEditor(**page, services, project); },
         .openPreview = [page, &services](const auto& pack,
                                          const auto& email) { openPreview(**page, services, pack, email); },
         .chooseFile = {}});
    return *page;
}

}  // namespace quorvane::BillingSheets
