#include "diagnostics/performance/PerformanceReportModules.h"

namespace quorvane::PerformanceReportModules {
namespace {

/// A path reaches to the end of its line and may hold anything, even another separator. No function's name holds one:
/// what follows a minus in an argument of a template never begins with a slash.
constexpr std::string_view separator = " - /";

void appendLine(std::string& out, std::string_view line) {
    const auto found = line.find(separator);
    if (found == std::string_view::npos) {
        out += line;
        return;
    }
    out += line.substr(0, found + separator.size() - 1);
    out += line.substr(line.rfind('/') + 1);
}

}  // namespace

std::string withoutFolders(std::string_view stacks) {
    std::string out;
    out.reserve(stacks.size());
    while (!stacks.empty()) {
        const auto end = stacks.find('\n');
        const auto length = end == std::string_view::npos ? stacks.size() : end + 1;
        appendLine(out, stacks.substr(0, length));
        stacks.remove_prefix(length);
    }
    return out;
}

}  // namespace quorvane::PerformanceReportModules
