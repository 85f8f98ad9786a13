#include "Pictures.h"
#include "shell/billing/BillingPage.h"
#include "shell/look/Controls.h"
#include "shell/state/BillingPackPreviewView.h"
#include "shell/support/Offscreen.h"
#include "store/ActivityRecord.h"

#include <map>
#include <string_view>

namespace quorvane {
namespace {

constexpr const char* editedProject = "00000000-0000-4000-8000-000000000001";

/// What was looked up and written about belongs to projects too, and part of it is doubtful.
void giveRecordsToProjects(WindowScene& scene) {
    auto& context = scene.store.context();
    std::map<std::string, std::shared_ptr<Project>> projects;
    for (const auto& project : context.fetch<Project>())
        projects[project->name()] = project;
    const std::map<std::string, std::string, std::less<>> projectOf{
        {"Figma", "Harbour rebrand"}, {"Firefox", "Fjord newsletter"}, {"Thunderbird", "Orchard checkout"}};
    double confidence = 0.62;
    for (const auto& record : context.fetch<ActivityRecord>()) {
        const auto project = projectOf.find(record->appName().value_or(""));
        if (project == projectOf.end()) continue;
        record->project = projects.at(project->second);
        if (project->first == "Figma") continue;
        record->confidence = confidence;
        record->setBillingStatus(BillingStatus::review);
        confidence = confidence > 0.9 ? 0.62 : confidence + 0.09;
    }
    context.save();
}

void showBilling(WindowScene& scene) {
    giveRecordsToProjects(scene);
    showSection(scene, MainSection::billing);
}

/// The billing section after a button was pressed.
std::function<void(WindowScene&)> pressing(std::function<std::string(const Localization&)> button) {
    return [text = std::move(button)](WindowScene& scene) {
        showBilling(scene);
        pressButton(scene, text(scene.services().localization));
    };
}

void showEmail(WindowScene& scene) {
    const auto& texts = scene.services().localization;
    showBilling(scene);
    scene.window().activateWindow();
    pressButton(scene, texts.text("billing_preview_pack"));
    for (auto* const child : scene.window().findChildren<QWidget*>())
        if (auto* const tabs = dynamic_cast<QTabBar*>(child);
            tabs != nullptr && tabs->accessibleName().toStdString() == texts.text("billing_preview_pack"))
            tabs->setFocus();
    press(Qt::Key_Right);
}

void showProject(WindowScene& scene) {
    showBilling(scene);
    widgetBelow<BillingPage>(scene.window()).dashboard().editProject(*Uuid::parse(editedProject));
}

}  // namespace

std::vector<Picture> billingPictures() {
    const auto showEmpty = [](WindowScene& scene) { showSection(scene, MainSection::billing); };
    return {{.name = "billing", .arrange = showBilling, .alsoMirrored = true},
            {.name = "billing-empty", .arrange = showEmpty, .isEmpty = true},
            {.name = "billing-guard", .arrange = pressing([](const auto& l) { return l.text("billing_export_pack"); })},
            {.name = "review", .arrange = pressing([](const auto& l) { return l.text("review_queue_open"); })},
            {.name = "preview", .arrange = pressing([](const auto& l) { return l.text("billing_preview_pack"); })},
            {.name = "preview-email", .arrange = showEmail},
            {.name = "project", .arrange = showProject}};
}

}  // namespace quorvane
