#include "shell/settings/SettingsPages.h"

#include "shell/look/Alert.h"
#include "shell/look/Painting.h"
#include "shell/look/Typography.h"
#include "shell/settings/CaptureTestSection.h"
#include "shell/settings/GeneralPage.h"
#include "shell/settings/OrganizationPage.h"
#include "shell/settings/PermissionSection.h"
#include "shell/settings/TrackingPage.h"

#include <QVBoxLayout>

namespace quorvane {
namespace {

SettingsView::Services settingsServices(AppServices& services) {
    return {.context = services.context,
            .logger = services.logger,
            .localization = services.localization,
            .applyDockVisibility = [&services](bool hide, bool activate) {
                // Windows that were in the taskbar and stay there need nothing.
                if (hide || activate) services.setHideDockIcon(hide);
            }};
}

}  // namespace

SettingsPages::SettingsPages(AppServices& services, const SettingsSheet::MakeLogSection& makeLogSection,
                             QWidget* parent)
    : QWidget(parent), services_(services), settings_(settingsServices(services)), applications_(services.categories),
      permissions_(services.permissionChecker, services.runLoop, services.localization) {
    const Localization& texts = services.localization;
    settings_.load();
    services.autoStartManager.refreshStatus();
    permissions_.refresh();
    pages_ = {new GeneralPage(settings_, services.autoStartManager, texts), new TrackingPage(settings_, texts),
              new OrganizationPage(applications_, texts), diagnostics(makeLogSection)};
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    for (QWidget* const page : pages_)
        column->addWidget(page);
    column->addStretch(1);
    showPage(0);
    autoStartFailed_ = services.autoStartManager.failed.subscribe(
        [this](const AutoStartAlert& alert) { showAutoStartFailure(alert); });
}

QWidget* SettingsPages::diagnostics(const SettingsSheet::MakeLogSection& makeLogSection) {
    auto* const page = new QWidget;
    auto* const column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Metrics::cardGap);
    if (QWidget* const log = makeLogSection ? makeLogSection() : nullptr) column->addWidget(log);
    column->addWidget(new PermissionSection(permissions_, services_.localization));
    column->addWidget(new CaptureTestSection(permissions_, services_.localization));
    return page;
}

void SettingsPages::showPage(int index) {
    for (std::size_t i = 0; i < pages_.size(); ++i)
        pages_[i]->setVisible(static_cast<int>(i) == index);
}

void SettingsPages::showAutoStartFailure(const AutoStartAlert& alert) {
    Alert::show(*window(),
                {.title = qt(alert.message),
                 .text = qt(alert.informativeText),
                 .choices = {{.text = qt(alert.settingsButton),
                              .act = [&manager = services_.autoStartManager] { manager.openLoginItemSettings(); }},
                             {.text = qt(services_.localization.text("close")), .act = {}}}});
}

}  // namespace quorvane
