#pragma once

#include <string>
#include <string_view>

/// Keeps private data out of the log. Callable from any thread.
namespace quorvane::LogPrivacySanitizer {

/// The text with, in this order, web URLs, file URLs, paths in home directories, mail addresses and what looks like a
/// credential replaced by "[redacted-...]". Home directories are those below /Users and /home, /root, and the given
/// one. All other bytes come out as they went in, valid UTF-8 or not. Takes time in proportion to the text's length.
[[nodiscard]] std::string sanitize(std::string_view text, std::string_view homeDirectory);

/// The same with the home directory that the process was started with.
[[nodiscard]] std::string sanitize(std::string_view text);

}  // namespace quorvane::LogPrivacySanitizer
