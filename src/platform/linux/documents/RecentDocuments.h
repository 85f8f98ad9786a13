#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// The list that applications keep of the documents that were opened with them (recently-used.xbel).
namespace quorvane::platform::RecentDocuments {

/// Local files of the list whose name stands in the title and that a program of one of these names opened; longer names
/// first, of the same length the last used first. A list that breaks off counts up to there.
[[nodiscard]] std::vector<std::string> namedByTitle(std::string_view xbel, std::string_view title,
                                                    const std::vector<std::string>& programs);

/// The first of them that exists, from the user's list, of which 8 MiB are read; an empty path for none.
[[nodiscard]] std::filesystem::path fileNamedByTitle(std::string_view title, const std::vector<std::string>& programs);

}  // namespace quorvane::platform::RecentDocuments
