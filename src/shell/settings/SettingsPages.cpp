#include "shell/settings/SettingsPages.h"

#include "shell/look/Alert.h"
#include "shell/look/Controls.h"
#include "shell/look/Painting.h"
#include "shell/look/Typography.h"
#include "shell/settings/CaptureHealthPage.h"
#include "shell/settings/CaptureTestSection.h"
#include "shell/settings/GeneralPage.h"
#include "shell/settings/OrganizationPage.h"
#include "shell/settings/PermissionSection.h"
#include "shell/settings/SettingsSection.h"
#include "shell/settings/TrackingPage.h"
#include "shell/signals/Subscribe.h"

#include <QVBoxLayout>

namespace quorvane {
namespace {

SettingsView::Services settingsServices(AppServices& services) {
    return {.context = services.context,
            .logger = services.logger,
            .localization = services.localization,
            .applyDockVisibility = services.setHideDockIcon};
}

}  // namespace

SettingsPages::SettingsPages(AppServices& services, const SettingsSheet::MakeLogSection& makeLogSection,
                             QWidget* parent)
    : QWidget(parent), services_(services), settings_(settingsServices(services)),
      applications_(services.categories, services.localization),
      permissions_(services.permissionChecker, services.runLoop, services.localization) {
    const Localization& texts = services.localization;
    settings_.load();
    services.autoStartManager.refreshStatus();
    permissions_.refresh();
    pages_ = {new GeneralPage(settings_, services.autoStartManager, texts), new TrackingPage(settings_, texts),
              new CaptureHealthPage(services.captureHealth, services.runLoop, texts),
              new OrganizationPage(applications_, texts), diagnostics(makeLogSection)};
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    for (QWidget* const page : pages_)
        column->addWidget(page);
    column->addStretch(1);
    showPage(0);
    subscribe(services.autoStartManager.failed, *this,
              [this](const AutoStartAlert& alert) { showAutoStartFailure(alert); });
}

QWidget* SettingsPages::diagnostics(const SettingsSheet::MakeLogSection& makeLogSection) {
    auto* const page = new QWidget;
    auto* const column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Metrics::cardGap);
    if (services_.setPerformanceReportsEnabled) column->addWidget(performanceReports());
    if (QWidget* const log = makeLogSection ? makeLogSection() : nullptr) column->addWidget(log);
    column->addWidget(new PermissionSection(permissions_, services_.localization));
    column->addWidget(new CaptureTestSection(permissions_, services_.localization));
    return page;
}

QWidget* SettingsPages::performanceReports() {
    const Localization& texts = services_.localization;
    auto* const section = new SettingsSection(qt(texts.text("perf_reports_section_title")));
    auto* const isOn = switchBox({});
    isOn->setChecked(services_.performanceReports.isEnabled());
    connect(isOn, &QAbstractButton::clicked, this, [this](bool on) { services_.setPerformanceReportsEnabled(on); });
    auto* const row = new SettingsRow(qt(texts.text("perf_reports_toggle")), isOn);
    row->setHelp(qt(texts.text("perf_reports_help")));
    section->addRow(row);
    return section;
}

void SettingsPages::showPage(int index) {
    for (std::size_t i = 0; i < pages_.size(); ++i)
        pages_[i]->setVisible(static_cast<int>(i) == index);
}

void SettingsPages::showAutoStartFailure(const AutoStartAlert& alert) {
    Alert::Content content{.title = qt(alert.message), .text = qt(alert.informativeText)};
    if (!alert.settingsButton.empty())
        content.choices.push_back({.text = qt(alert.settingsButton), .act = [&manager = services_.autoStartManager] {
                                       manager.openLoginItemSettings();
                                   }});
    content.choices.push_back({.text = qt(services_.localization.text("close"))});
    Alert::show(*window(), content);
}

}  // namespace quorvane
