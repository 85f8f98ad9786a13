#include "Pictures.h"
#include "rules/BuiltInRuleTemplates.h"
#include "shell/logs/LogViewerWindow.h"
#include "shell/rules/RulesPage.h"
#include "shell/settings/SettingsTabs.h"
#include "shell/support/Offscreen.h"
#include "store/AppSettings.h"

#include <QApplication>
#include <tuple>

namespace quorvane {
namespace {

void showRules(WindowScene& scene) {
    BuiltInRuleTemplates::importAll(scene.store.context(), scene.services().localization);
    showSection(scene, MainSection::rules);
    auto& state = widgetBelow<RulesPage>(scene.window()).state();
    state.refresh();
    state.select(state.rows().at(2).rule);
}

/// With everything that there is to set.
std::function<void(WindowScene&)> showingSettings(int tab) {
    return [tab](WindowScene& scene) {
        auto& context = scene.store.context();
        context.fetch<AppSettings>().front()->onlyTrackWorkHours = true;
        context.save();
        auto& categories = scene.services().categories;
        categories.setPreference("Figma", {.category = "工作", .tags = {"设计", "创意工作"}});
        categories.setPreference("Slack", {.category = "社交", .tags = {}});
        categories.addCustomCategory("Client calls");
        scene.services().setPerformanceReportsEnabled = nullptr;  // as built without a host for reports
        scene.window().openSettings();
        widgetBelow<SettingsTabs>(scene.window()).choose(tab);
    };
}

void addPreference(WindowScene& scene) {
    showingSettings(2)(scene);
    pressButton(scene, scene.services().localization.text("add_app_button"));
}

void showLog(WindowScene& scene) {
    constexpr std::tuple<const char*, LogLevel, const char*> lines[] = {
        {"The store was opened.", LogLevel::info, "Store"},
        {"The list of recent documents was read.", LogLevel::debug, "Documents"},
        {"The browser did not answer in time.", LogLevel::warning, "Browser"},
        {"The export could not be written: no space is left on the device.", LogLevel::error, "Export"},
        {"15 records were cleaned.", LogLevel::info, "Cleanup"}};
    for (int round = 0; round < 4; ++round)
        for (const auto& [text, level, module] : lines)
            scene.services().logger.log(text, level, module);
    scene.window().openLog();
}

void showLicences(WindowScene& scene) {
    scene.window().openAbout();
    pressButton(scene, scene.services().localization.text("ui_licences_button"));
}

QWidget* logWindow() {
    for (auto* const widget : QApplication::topLevelWidgets())
        if (dynamic_cast<LogViewerWindow*>(widget) != nullptr) return widget;
    throw std::runtime_error("there is no log window");
}

}  // namespace

std::vector<Picture> otherPictures() {
    return {
        {.name = "rules", .arrange = showRules, .alsoMirrored = true},
        {.name = "rules-empty", .arrange = [](WindowScene& scene) { showSection(scene, MainSection::rules); }},
        {.name = "export", .arrange = [](WindowScene& scene) { showSection(scene, MainSection::exporting); }},
        {.name = "settings-general", .arrange = showingSettings(0)},
        {.name = "settings-tracking", .arrange = showingSettings(1)},
        {.name = "settings-organization", .arrange = showingSettings(2)},
        {.name = "settings-application", .arrange = addPreference},
        {.name = "settings-diagnostics", .arrange = showingSettings(3)},
        {.name = "log", .arrange = showLog, .window = logWindow},
        {.name = "about", .arrange = [](WindowScene& scene) { scene.window().openAbout(); }},
        {.name = "licences", .arrange = showLicences},
    };
}

}  // namespace quorvane
