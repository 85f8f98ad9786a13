#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

/// The reports that wait on disk, packed, one file each: at most five, the newest. A file is whole or not there, also
/// after a kill. Nothing here throws. One thread at a time, but for `pending`.
class PerformanceReportSpool {
public:
    static constexpr std::size_t mostFiles = 5;
    static constexpr std::string_view suffix = ".json.gz";

    /// Without a directory nothing is kept and nothing waits. It is made with the first report.
    explicit PerformanceReportSpool(std::optional<std::filesystem::path> directory);

    /// Keeps a report and deletes the oldest that are too many with it. What went wrong with keeping it, if anything
    /// did.
    [[nodiscard]] std::optional<std::string> store(std::string_view reportID, std::string_view bytes);

    /// The oldest first, by when they were written.
    [[nodiscard]] std::vector<std::filesystem::path> pending() const;

    static void remove(const std::filesystem::path& file);

    /// Deletes all that waits.
    void discard();

    /// Deletes what a kill in the middle of writing has left behind.
    void removeLeftovers();

private:
    [[nodiscard]] std::optional<std::string> write(std::string_view reportID, std::string_view bytes);
    void keepNewest(std::size_t most);
    [[nodiscard]] std::vector<std::filesystem::path> entries() const;

    std::optional<std::filesystem::path> directory_;
};

}  // namespace quorvane
