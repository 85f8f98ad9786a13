#include "diagnostics/performance/PerformanceReportSpool.h"

#include "base/AtomicFile.h"

#include <algorithm>
#include <fmt/format.h>
#include <system_error>
#include <utility>

namespace quorvane {
namespace {

namespace fs = std::filesystem;

/// `AtomicFile` writes "NAME.json.gz.XXXXXX" first.
bool isLeftover(const fs::path& file) {
    constexpr std::size_t randomPart = 7;
    const auto name = file.filename().string();
    return name.size() > randomPart && name[name.size() - randomPart] == '.' &&
           std::string_view(name).substr(0, name.size() - randomPart).ends_with(PerformanceReportSpool::suffix);
}

}  // namespace

PerformanceReportSpool::PerformanceReportSpool(std::optional<fs::path> directory) : directory_(std::move(directory)) {}

std::optional<std::string> PerformanceReportSpool::store(std::string_view reportID, std::string_view bytes) {
    if (!directory_) return std::nullopt;
    removeLeftovers();
    auto problem = write(reportID, bytes);
    keepNewest(mostFiles);
    return problem;
}

std::optional<std::string> PerformanceReportSpool::write(std::string_view reportID, std::string_view bytes) {
    try {
        if (fs::create_directories(*directory_)) fs::permissions(*directory_, fs::perms::owner_all);
        AtomicFile file(*directory_ / fmt::format("{}{}", reportID, suffix));
        file.write(bytes);
        keepNewest(mostFiles - 1);  // before it counts, so that a kill between the two leaves no sixth
        file.commit();
        return std::nullopt;
    } catch (const FileError& error) {
        return error.what();
    } catch (const fs::filesystem_error& error) {
        return error.what();
    }
}

void PerformanceReportSpool::keepNewest(std::size_t most) {
    const auto files = pending();
    for (std::size_t i = 0; i + most < files.size(); ++i)
        remove(files[i]);
}

std::vector<fs::path> PerformanceReportSpool::entries() const {
    std::vector<fs::path> found;
    std::error_code error;
    if (!directory_) return found;
    for (fs::directory_iterator entry(*directory_, error), end; !error && entry != end; entry.increment(error))
        found.push_back(entry->path());
    return found;
}

std::vector<fs::path> PerformanceReportSpool::pending() const {
    std::vector<std::pair<fs::file_time_type, fs::path>> dated;
    for (const auto& file : entries()) {
        if (!file.filename().string().ends_with(suffix)) continue;
        std::error_code error;
        const auto written = fs::last_write_time(file, error);
        dated.emplace_back(error ? fs::file_time_type::min() : written, file);
    }
    std::ranges::sort(dated);
    std::vector<fs::path> files;
    files.reserve(dated.size());
    for (auto& [written, file] : dated)
        files.push_back(std::move(file));
    return files;
}

void PerformanceReportSpool::remove(const fs::path& file) {
    std::error_code ignored;
    fs::remove(file, ignored);
}

void PerformanceReportSpool::discard() {
    removeLeftovers();
    for (const auto& file : pending())
        remove(file);
}

void PerformanceReportSpool::removeLeftovers() {
    for (const auto& file : entries())
        if (isLeftover(file)) remove(file);
}

}  // namespace quorvane
