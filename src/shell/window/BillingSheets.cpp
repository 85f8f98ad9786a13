#include "shell/window/BillingSheets.h"

#include "billing/BillingPack.h"
#include "platform/Clock.h"
#include "shell/app/AppServices.h"
#include "shell/billing/BillingPackPreviewSheet.h"
#include "shell/billing/BillingReviewQueueSheet.h"
#include "shell/billing/ProjectBillingEditorSheet.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace quorvane::BillingSheets {
namespace {

using Records = std::vector<std::shared_ptr<ActivityRecord>>;

void openReviewQueue(BillingPage& page, AppServices& services, const Records& records) {
    auto queue = std::make_unique<BillingReviewQueueView>(services.context, records, page.dashboard().projects(),
                                                          services.localization);
    BillingReviewQueueSheet::open(*page.window(), std::move(queue), services.localization);
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
         .openProjectEditor =
             [page, &services](const std::shared_ptr<Project>& project) {
                 ProjectBillingEditorSheet::open(*(*page)->window(), std::make_unique<ProjectBillingEditor>(project),
                                                 figuresOf(*project, (*page)->dashboard(), services.localization),
                                                 services.localization);
             },
         .openPreview =
             [page, &services](const std::string& pack, const std::string& email) {
                 BillingPackPreviewSheet::open(*(*page)->window(),
                                               {.markdown = pack,
                                                .emailBody = email,
                                                .fileName = BillingPack::billingPackFileName(platform::currentDate())},
                                               services.localization);
             },
         .chooseFile = {}});
    return *page;
}

}  // namespace quorvane::BillingSheets
