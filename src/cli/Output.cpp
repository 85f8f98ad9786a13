#include "cli/Output.h"

#include "cli/CommandContext.h"

#include <cerrno>
#include <fmt/format.h>
#include <system_error>
#include <unistd.h>

namespace quorvane::cli {
namespace {

constexpr std::size_t bufferSize = 1 << 16;

}  // namespace

Output::Output(const std::optional<std::string>& file, const CommandContext& context) {
    if (!file || *file == "-") return;
    std::error_code error;
    if (std::filesystem::equivalent(*file, context.storeFile(), error))
        throw CommandError(ExitStatus::failed, fmt::format("{}: this is the store itself", *file));
    file_.emplace(*file);
}

void Output::write(std::string_view bytes) {
    if (file_) return file_->write(bytes);
    buffer_ += bytes;
    if (buffer_.size() >= bufferSize) flush();
}

void Output::finish() {
    if (file_) return file_->commit();
    flush();
}

void Output::flush() {
    std::string_view rest = buffer_;
    while (!rest.empty()) {
        const ssize_t written = ::write(STDOUT_FILENO, rest.data(), rest.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0 && errno == EPIPE) throw CommandError(ExitStatus::readerGone, "nobody reads standard output");
        if (written < 0)
            throw CommandError(ExitStatus::failed, fmt::format("cannot write to standard output: {}",
                                                               std::generic_category().message(errno)));
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
    buffer_.clear();
}

}  // namespace quorvane::cli
