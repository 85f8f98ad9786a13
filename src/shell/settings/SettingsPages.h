#pragma once

#include "shell/app/AppServices.h"
#include "shell/settings/SettingsSheet.h"
#include "shell/state/AppCategoryManagementView.h"
#include "shell/state/PermissionRows.h"
#include "shell/state/SettingsView.h"

#include <QWidget>
#include <vector>

namespace quorvane {

/// The five pages of the settings, one of which shows, and the state that they edit.
class SettingsPages : public QWidget {
public:
    SettingsPages(AppServices& services, const SettingsSheet::MakeLogSection& makeLogSection,
                  QWidget* parent = nullptr);

    void showPage(int index);
    [[nodiscard]] bool save() { return settings_.save(); }

private:
    QWidget* diagnostics(const SettingsSheet::MakeLogSection& makeLogSection);
    [[nodiscard]] QWidget* performanceReports();
    void showAutoStartFailure(const AutoStartAlert& alert);

    AppServices& services_;
    SettingsView settings_;
    AppCategoryManagementView applications_;
    PermissionRows permissions_;
    std::vector<QWidget*> pages_;
};

}  // namespace quorvane
