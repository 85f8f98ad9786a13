#include "cli/ServiceConsole.h"

#include "cli/CommandContext.h"

namespace quorvane::cli {
namespace {

/// "Service: <what> failed: <error>", where <what> is a single word: names of applications stand behind a blank.
bool reportsFailure(std::string_view line) {
    const auto service = line.find(": ");
    if (service == std::string_view::npos) return false;
    line.remove_prefix(service + 2);
    return line.substr(0, line.find(' ')).ends_with("失败:");
}

}  // namespace

void ServiceConsole::write(std::string_view line) {
    if (isFinished_) return;
    hasFailed_ = hasFailed_ || reportsFailure(line);
    console_.write(line);
}

void ServiceConsole::finish() {
    isFinished_ = true;
    if (hasFailed_) throw CommandError(ExitStatus::failed, "a part of the work failed; the lines above say which");
}

}  // namespace quorvane::cli
