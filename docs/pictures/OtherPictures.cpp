#include "Pictures.h"
#include "rules/BuiltInRuleTemplates.h"
#include "shell/logs/LogViewerWindow.h"
#include "shell/rules/RulesPage.h"
#include "shell/settings/SettingsSheet.h"
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
std::function<void(WindowScene&)> showingSettings(SettingsSheet::Page page) {
    return [page](WindowScene& scene) {
        auto& context = scene.store.context();
        context.fetch<AppSettings>().front()->onlyTrackWorkHours = true;
        context.save();
        auto& categories = scene.services().categories;
        categories.setPreference("Figma", {.category = "工作", .tags = {"设计", "创意工作"}});
        categories.setPreference("Slack", {.category = "社交", .tags = {}});
        categories.addCustomCategory("Client calls");
        scene.services().setPerformanceReportsEnabled = nullptr;  // as built without a host for reports
        scene.window().openSettings(page);
    };
}

using platform::Channel;
using platform::Mend;
using platform::Obstacle;
using platform::Sight;

/// The desktop answers so: whoever tells of windows first, then the others.
std::function<void(WindowScene&)> showingCapture(const Channel& windows, const std::vector<Channel>& others) {
    return [windows, others](WindowScene& scene) {
        scene.desktop.setForegroundChannel(windows);
        scene.desktop.setFurtherSight(others);
        scene.runLoop.playFor(30s);
        showingSettings(SettingsSheet::Page::capture)(scene);
    };
}

std::vector<Channel> otherChannels(const Channel& windows) {
    Channel titles = windows;
    titles.question = "window titles";
    titles.gives = Sight::titles;
    return {titles,
            {.question = "system idle time", .name = "Mutter's idle monitor", .isAvailable = true},
            {.question = "lock and unlock", .name = "logind session", .isAvailable = true},
            {.question = "accessibility tree",
             .name = "AT-SPI",
             .reason = "accessibility is switched off in the session",
             .remedy = "Grant it in the settings, then start the browsers again.",
             .mend = Mend::accessibility},
            {.question = "automation", .name = "titles and /proc", .isAvailable = true, .gives = Sight::documents},
            {.question = "page in front",
             .name = "browser extension",
             .reason = "no browser with the extension has connected",
             .remedy = "Run quorvane-cli browser install and do what it says; or switch accessibility on.",
             .gives = Sight::pages,
             .obstacle = Obstacle::noBrowser,
             .mend = Mend::browser}};
}

std::vector<Picture> capturePictures() {
    const Channel whole{.question = "front window and activation",
                        .name = "extension of GNOME Shell",
                        .isAvailable = true,
                        .gives = Sight::applications};
    Channel part = whole;
    part.name = "AT-SPI, partial";
    part.reason = "terminals, games and others that don't speak to assistive technology are not seen";
    part.remedy = "Run quorvane-cli desktop install, then log in again.";
    part.obstacle = Obstacle::noExtension;
    part.mend = Mend::desktopAid;
    Channel none = part;
    none.isAvailable = false;
    none.reason = "this compositor tells no application which window is in front, and no accessibility bus runs";
    none.remedy = "Choose an X11 session at the login screen, often called \"Xorg\" or \"X11\".";
    none.obstacle = Obstacle::wayland;
    none.mend = Mend::nothing;
    return {{.name = "settings-capture", .arrange = showingCapture(whole, otherChannels(whole))},
            {.name = "settings-capture-part", .arrange = showingCapture(part, otherChannels(part))},
            {.name = "settings-capture-blind", .arrange = showingCapture(none, otherChannels(none))}};
}

void addPreference(WindowScene& scene) {
    showingSettings(SettingsSheet::Page::organization)(scene);
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
    std::vector<Picture> pictures{
        {.name = "rules", .arrange = showRules, .alsoMirrored = true},
        {.name = "rules-empty", .arrange = [](WindowScene& scene) { showSection(scene, MainSection::rules); }},
        {.name = "export", .arrange = [](WindowScene& scene) { showSection(scene, MainSection::exporting); }},
        {.name = "settings-general", .arrange = showingSettings(SettingsSheet::Page::general)},
        {.name = "settings-tracking", .arrange = showingSettings(SettingsSheet::Page::tracking)},
        {.name = "settings-organization", .arrange = showingSettings(SettingsSheet::Page::organization)},
        {.name = "settings-application", .arrange = addPreference},
        {.name = "settings-diagnostics", .arrange = showingSettings(SettingsSheet::Page::diagnostics)},
        {.name = "log", .arrange = showLog, .window = logWindow},
        {.name = "about", .arrange = [](WindowScene& scene) { scene.window().openAbout(); }},
        {.name = "licences", .arrange = showLicences},
    };
    for (auto& picture : capturePictures())
        pictures.push_back(std::move(picture));
    return pictures;
}

}  // namespace quorvane
