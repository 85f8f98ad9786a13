#include "shell/logs/LogActions.h"

#include "shell/look/Alert.h"
#include "shell/look/SaveDialog.h"
#include "shell/look/Typography.h"
#include "shell/state/DiagnosticReportExport.h"

#include <utility>

namespace quorvane {

void LogActions::confirmClear(QWidget& window, const Localization& localization, std::function<void()> clear,
                              std::function<void()> cancel) {
    Alert::Choice clearing{.text = qt(localization.text("clear")), .act = std::move(clear), .isDestructive = true};
    Alert::Choice leaving{.text = qt(localization.text("cancel")), .act = std::move(cancel)};
    Alert::show(window, {.title = qt(localization.text("confirm_clear_logs")),
                         .text = qt(localization.text("confirm_clear_logs_message")),
                         .iconName = QStringLiteral("trash"),
                         .choices = {std::move(clearing), std::move(leaving)}});
}

void LogActions::exportReport(QWidget& parent, AppLogger& logger, const Localization& localization,
                              std::string module) {
    const DiagnosticReportExport taken(logger, localization, std::move(module));
    SaveDialog::open(parent,
                     {.title = qt(localization.text("export_diagnostic_report")),
                      .fileName = qt(taken.fileName()),
                      .mimeType = QStringLiteral("text/plain")},
                     [taken](const std::filesystem::path& file) { taken.save(file); });
}

}  // namespace quorvane
