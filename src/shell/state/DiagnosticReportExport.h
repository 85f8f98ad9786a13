#pragma once

#include "diagnostics/AppLogger.h"
#include "l10n/Localization.h"

#include <filesystem>
#include <string>

namespace quorvane {

/// A diagnostic report on its way into a file: what the log held when this was made, however long the user looks for a
/// place. What it is made on outlives it. Main thread only.
class DiagnosticReportExport {
public:
    /// `module` stands in the log line that says how it went: "LogViewer", "Settings".
    DiagnosticReportExport(AppLogger& logger, const Localization& localization, std::string module);

    [[nodiscard]] const std::string& fileName() const { return fileName_; }  ///< to propose
    [[nodiscard]] const std::string& report() const { return report_; }

    /// Writes the whole report or nothing; the log says which.
    void save(const std::filesystem::path& file) const;

private:
    AppLogger& logger_;
    const Localization& localization_;
    std::string module_;
    std::string fileName_;
    std::string report_;
};

}  // namespace quorvane
