#pragma once

#include "shell/app/AppServices.h"
#include "shell/settings/SettingsPage.h"
#include "shell/state/PermissionRows.h"

#include <vector>

namespace quorvane {

/// Reports, the log, the three permissions, and tests that read a web address or a document from the application that
/// the user brings to the front. All of it takes effect at once.
class DiagnosticsPage : public SettingsPage {
public:
    /// `log` may be null.
    DiagnosticsPage(AppServices& services, PermissionRows& permissions, QWidget* log);

private:
    void addReports(AppServices& services);
    void addPermissions();
    void addTests();
    void addTest(SettingsSection& section, PermissionRows::CaptureTest test, MessageKey<> title);
    void refresh();
    void showResult(PermissionRows::CaptureTest test, Label& result);

    PermissionRows& permissions_;
    std::vector<StateRow*> rows_;
    QPushButton* again_ = nullptr;
    std::vector<std::pair<PermissionRows::CaptureTest, Label*>> results_;
};

}  // namespace quorvane
