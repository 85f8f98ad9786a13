#include "cli/Progress.h"

#include <cstdio>
#include <fmt/format.h>
#include <unistd.h>

namespace quorvane::cli {
namespace {

/// Work on fewer is over before anybody reads a number.
constexpr std::size_t step = 10'000;

}  // namespace

Progress::Progress(std::string unit) : unit_(std::move(unit)), isTerminal_(::isatty(STDERR_FILENO) == 1) {}

Progress::~Progress() {
    if (shown_ != 0) std::fputs("\r\x1b[K", stderr);
}

void Progress::show(std::size_t count) {
    if (!isTerminal_ || count < shown_ + step) return;
    shown_ = count;
    std::fputs(fmt::format("\r{} {} ...", count, unit_).c_str(), stderr);
    std::fflush(stderr);
}

}  // namespace quorvane::cli
