#pragma once

#include "base/Calendar.h"
#include "base/Collation.h"
#include "base/Date.h"
#include "base/Signal.h"
#include "base/Uuid.h"
#include "base/Weak.h"
#include "billing/CSVExporter.h"
#include "diagnostics/ConsoleSink.h"
#include "l10n/Localization.h"
#include "platform/RunLoop.h"
#include "store/LiveQuery.h"
#include "store/ModelContainer.h"
#include "store/Project.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <unordered_set>
#include <vector>

namespace quorvane {

/// What the export screen holds: which records, and how far a save has come. Records are counted and written where they
/// are stored; none is held. Main thread only; what it is made on outlives it.
class ExportState {
public:
    /// The last seven days are chosen, of all projects.
    ExportState(ModelContainer& store, platform::RunLoop& runLoop, const Localization& localization,
                ConsoleSink& console);

    Date startDate;  ///< of the earliest `startTime`, inclusive
    Date endDate;    ///< of the latest `startTime`, inclusive

    /// All projects, as the user's language orders their names.
    [[nodiscard]] std::vector<std::shared_ptr<Project>> projects() const;
    [[nodiscard]] bool isSelected(const Uuid& project) const { return selectedProjects_.contains(project); }
    [[nodiscard]] std::size_t selectedProjectCount() const { return selectedProjects_.size(); }
    void toggle(const Uuid& project);

    /// What an export holds now. It reaches back 365 days from when the screen was opened, at most.
    [[nodiscard]] CSVExporter::Selection selection() const;
    [[nodiscard]] std::size_t recordCount() const;

    /// The name that a file dialog proposes.
    [[nodiscard]] std::string defaultFileName() const;

    /// From the opening of the file dialog until its file is written, or it was closed without one.
    [[nodiscard]] bool isExporting() const { return isExporting_; }
    [[nodiscard]] const std::optional<std::filesystem::path>& exportURL() const { return exportURL_; }
    void beginExport();
    void cancelExport();

    /// Writes what is selected now to the file, which appears whole or not at all, beside the main thread. A failure is
    /// printed.
    void save(const std::filesystem::path& file);

    Signal<std::size_t> progressed;  ///< how many records are written
    Signal<> finished;               ///< after `isExporting` and `exportURL` have changed

private:
    void finish(const std::filesystem::path& file, const std::optional<std::string>& error);

    ModelContext& context_;
    ModelConfiguration reading_;  ///< how a worker opens the store
    platform::RunLoop& runLoop_;
    const Localization& localization_;
    ConsoleSink& console_;
    Collation collation_;
    Date earliest_;  ///< fixed when the screen is made
    LiveQuery<Project> allProjects_;
    std::unordered_set<Uuid> selectedProjects_;
    bool isExporting_ = false;
    std::optional<std::filesystem::path> exportURL_;
    WeakSource<ExportState> weak_{*this};  // last: dies first, so that no callback meets half a state
};

}  // namespace quorvane
