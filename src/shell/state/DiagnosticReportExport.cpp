#include "shell/state/DiagnosticReportExport.h"

#include "diagnostics/DiagnosticReport.h"
#include "platform/Clock.h"

#include <utility>

namespace quorvane {

DiagnosticReportExport::DiagnosticReportExport(AppLogger& logger, const Localization& localization, std::string module)
    : logger_(logger), localization_(localization), module_(std::move(module)),
      fileName_(diagnosticReportFileName(platform::currentDate())), report_(logger.exportDiagnosticReport()) {}

void DiagnosticReportExport::save(const std::filesystem::path& file) const {
    if (const auto error = saveDiagnosticReport(file, report_))
        logger_.log(localization_.text("diagnostic_export_failed", *error), LogLevel::error, module_);
    else
        logger_.log(localization_.text("diagnostic_export_success"), LogLevel::info, module_);
}

}  // namespace quorvane
