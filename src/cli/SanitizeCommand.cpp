#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "diagnostics/LogPrivacySanitizer.h"

#include <CLI/CLI.hpp>
#include <cerrno>
#include <fmt/format.h>
#include <system_error>
#include <unistd.h>

namespace quorvane::cli {
namespace {

std::string readStandardInput() {
    std::string text;
    char piece[1 << 16];
    for (;;) {
        const ssize_t got = ::read(STDIN_FILENO, piece, sizeof piece);
        if (got == 0) return text;
        if (got < 0 && errno == EINTR) continue;
        if (got < 0)
            throw CommandError(ExitStatus::failed,
                               fmt::format("cannot read standard input: {}", std::generic_category().message(errno)));
        text.append(piece, static_cast<std::size_t>(got));
    }
}

void sanitize() {
    Output output;
    output.write(LogPrivacySanitizer::sanitize(readStandardInput()));
    output.finish();
}

}  // namespace

void addSanitizeCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("sanitize", "Redact standard input as the log is redacted");
    command->callback([&context] { context.command = sanitize; });
}

}  // namespace quorvane::cli
