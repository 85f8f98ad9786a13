#include "diagnostics/performance/WholeRegularFile.h"

#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

namespace quorvane {

std::optional<std::string> wholeRegularFile(const std::filesystem::path& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return std::nullopt;
    std::ifstream stream(path, std::ios::binary);
    if (!stream) return std::nullopt;
    std::string bytes(std::istreambuf_iterator<char>(stream), {});
    return stream.bad() ? std::nullopt : std::optional(std::move(bytes));
}

}  // namespace quorvane
