#pragma once

#include "base/AtomicFile.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvane::cli {

struct CommandContext;

/// Where a command's data goes: standard output, or a file that appears whole or not at all. What can't be written
/// throws `CommandError` or `FileError`.
class Output {
public:
    /// Standard output.
    Output() = default;

    /// The file; "-" and none mean standard output. The store itself is refused.
    Output(const std::optional<std::string>& file, const CommandContext& context);

    void write(std::string_view bytes);

    /// Everything is out, or it throws. Without it a file does not appear.
    void finish();

private:
    void flush();

    std::optional<AtomicFile> file_;
    std::string buffer_;
};

}  // namespace quorvane::cli
