#include "billing/ExportState.h"

#include "base/AtomicFile.h"
#include "platform/Clock.h"
#include "platform/InBackground.h"
#include "store/ActivityRecord.h"
#include "store/StoreError.h"

#include <algorithm>

namespace quorvane {
namespace {

constexpr Seconds longestReach = 31'536'000s;  // 365 days
constexpr int defaultDays = 7;

/// Runs on a worker, with a connection of its own. Throws `StoreError` and `FileError`.
void writeFile(const ModelConfiguration& store, const CSVExporter::Selection& selection,
               const std::filesystem::path& file, const std::function<void(std::size_t)>& progress) {
    ModelContext reader(std::make_unique<Database>(store));
    AtomicFile output(file);
    CSVExporter::writeCSV(reader, selection, [&](std::string_view piece, std::size_t records) {
        output.write(piece);
        progress(records);
    });
    output.commit();
}

}  // namespace

ExportState::ExportState(ModelContainer& store, platform::RunLoop& runLoop, const Localization& localization,
                         ConsoleSink& console)
    : startDate(Calendar::current().addingDays(-defaultDays, platform::currentDate())),
      endDate(platform::currentDate()), context_(store.mainContext()), reading_(store.configuration()),
      runLoop_(runLoop), localization_(localization), console_(console),
      collation_(std::string(localization.language())), earliest_(endDate - longestReach),
      allProjects_(context_, {.sort = {ascending(&Project::name)}}) {
    reading_.allowsSave = false;
}

std::vector<std::shared_ptr<Project>> ExportState::projects() const {
    auto sorted = allProjects_.results();
    std::stable_sort(sorted.begin(), sorted.end(),
                     [this](const auto& a, const auto& b) { return collation_.comesBefore(a->name(), b->name()); });
    return sorted;
}

void ExportState::toggle(const Uuid& project) {
    if (selectedProjects_.erase(project) == 0) selectedProjects_.insert(project);
}

CSVExporter::Selection ExportState::selection() const {
    return {.start = std::max(startDate, earliest_), .end = endDate, .projects = selectedProjects_};
}

std::size_t ExportState::recordCount() const {
    const auto chosen = selection();
    const auto start = field(&ActivityRecord::startTime);
    const auto inRange = start >= chosen.start && start <= chosen.end;
    if (chosen.projects.empty()) return context_.count<ActivityRecord>(inRange);
    std::size_t count = 0;
    for (const auto& project : allProjects_.results())
        if (chosen.projects.contains(project->id()))
            count += context_.count<ActivityRecord>(refersTo(&ActivityRecord::project, *project) && inRange);
    return count;
}

std::string ExportState::defaultFileName() const {
    return CSVExporter::defaultFileName(platform::currentDate());
}

void ExportState::beginExport() {
    isExporting_ = true;
}

void ExportState::cancelExport() {
    isExporting_ = false;
}

void ExportState::save(const std::filesystem::path& file) {
    isExporting_ = true;
    try {
        context_.save();  // the worker reads what is stored
    } catch (const StoreError& error) {
        return finish(file, error.what());
    }
    const auto weak = weak_.handle();
    auto tell = [&loop = runLoop_, weak](std::size_t records) {
        loop.post([weak, records] {
            if (auto* self = weak.get()) self->progressed.send(records);
        });
    };
    platform::inBackground(
        runLoop_,
        [reading = reading_, selection = selection(), file, tell]() -> std::optional<std::string> {
            try {
                writeFile(reading, selection, file, tell);
                return std::nullopt;
            } catch (const std::runtime_error& error) {  // of the store or of the file
                return error.what();
            }
        },
        [weak, file](std::future<std::optional<std::string>> outcome) {
            if (auto* self = weak.get()) self->finish(file, outcome.get());
        });
}

void ExportState::finish(const std::filesystem::path& file, const std::optional<std::string>& error) {
    if (error)
        console_.line("{}: {}", localization_.text("export_failed"), *error);
    else
        exportURL_ = file;
    isExporting_ = false;
    finished.send();
}

}  // namespace quorvane
