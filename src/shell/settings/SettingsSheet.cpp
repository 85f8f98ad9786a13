#include "shell/settings/SettingsSheet.h"

#include "shell/look/Alert.h"
#include "shell/look/Boxes.h"
#include "shell/look/Controls.h"
#include "shell/look/Sheet.h"
#include "shell/settings/CaptureHealthPage.h"
#include "shell/settings/DiagnosticsPage.h"
#include "shell/settings/GeneralPage.h"
#include "shell/settings/OrganizationPage.h"
#include "shell/settings/TrackingPage.h"
#include "shell/signals/Subscribe.h"

namespace quorvane::SettingsSheet {
namespace {

constexpr int width = 760;
constexpr int height = 684;

SettingsView::Services settingsServices(AppServices& services) {
    return {.context = services.context,
            .logger = services.logger,
            .localization = services.localization,
            .applyDockVisibility = services.setHideDockIcon};
}

/// The pages, one of which shows, and the state that they edit. All of them are made at once, so that what was chosen
/// on one stays when another one shows. They are no stack, which would be as high as the highest.
class Pages : public QWidget {
public:
    Pages(AppServices& services, QTabBar& tabs, QWidget* log)
        : settings_(settingsServices(services)), applications_(services.categories, services.localization),
          permissions_(services.permissionChecker, services.runLoop, services.localization) {
        const Localization& texts = services.localization;
        settings_.load();
        services.autoStartManager.refreshStatus();
        permissions_.refresh();
        auto* const column = columnBox(0, this);
        const auto add = [&](const char* iconName, MessageKey<> title, QWidget* page) {
            column->addWidget(page);
            page->setVisible(tabs.count() == 0);
            const int index = tabs.addTab(icon(QString::fromLatin1(iconName)), qt(texts.text(title)));
            connect(&tabs, &QTabBar::currentChanged, page, [page, index](int now) { page->setVisible(now == index); });
        };
        add("sliders", "settings_tab_general", new GeneralPage(settings_, services.autoStartManager, texts));
        add("history", "settings_tab_tracking", new TrackingPage(settings_, texts));
        add("eye", "settings_tab_capture", new CaptureHealthPage(services.captureHealth, services.runLoop, texts));
        add("folder", "settings_tab_organization", new OrganizationPage(applications_, texts));
        add("pulse", "settings_tab_diagnostics", new DiagnosticsPage(services, permissions_, log));
        column->addStretch(1);
        subscribe(services.autoStartManager.failed, *this,
                  [this, &services](const AutoStartAlert& alert) { showAutoStartFailure(services, alert); });
    }

    [[nodiscard]] bool save() { return settings_.save(); }

private:
    void showAutoStartFailure(AppServices& services, const AutoStartAlert& alert) {
        Alert::Content content{.title = qt(alert.message), .text = qt(alert.informativeText)};
        if (!alert.settingsButton.empty())
            content.choices.push_back({.text = qt(alert.settingsButton), .act = [&manager = services.autoStartManager] {
                                           manager.openLoginItemSettings();
                                       }});
        content.choices.push_back({.text = qt(services.localization.text("close"))});
        Alert::show(*window(), content);
    }

    SettingsView settings_;
    AppCategoryManagementView applications_;
    PermissionRows permissions_;
};

}  // namespace

void open(QWidget& window, AppServices& services, const MakeLogSection& makeLogSection, Page page) {
    const Localization& texts = services.localization;
    auto* const sheet = new Sheet(window, qt(texts.text("settings")), width, height);
    auto* const tabs = new QTabBar;
    tabs->setUsesScrollButtons(false);
    tabs->setElideMode(Qt::ElideRight);
    auto* const pages = new Pages(services, *tabs, makeLogSection ? makeLogSection() : nullptr);
    sheet->setTabs(tabs);
    sheet->body().addWidget(pages);
    QObject::connect(tabs, &QTabBar::currentChanged, sheet, [sheet] { sheet->scrollToTop(); });
    auto* const cancel = pushButton(qt(texts.text("cancel")));
    auto* const save = pushButton(qt(texts.text("save")), "primary");
    QObject::connect(cancel, &QAbstractButton::clicked, sheet, [sheet] { sheet->close(); });
    QObject::connect(save, &QAbstractButton::clicked, sheet, [sheet, pages] {
        if (pages->save()) sheet->close();
    });
    tabs->setCurrentIndex(static_cast<int>(page));
    sheet->addAction(cancel);
    sheet->addAction(save);
    sheet->open();
}

}  // namespace quorvane::SettingsSheet
