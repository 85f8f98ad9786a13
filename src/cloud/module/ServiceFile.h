#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// The files in which libpq's users keep their connections, each under a name of its own. Nothing here connects.
namespace quorvane::ServiceFile {

enum class Section : std::uint8_t { missing, empty, filled };

/// The section of the name in the text of such a file; of several libpq takes the first. Any line that is neither blank
/// nor a comment fills it: whether libpq understands it shows when it connects.
[[nodiscard]] Section section(std::string_view text, std::string_view name);

/// Is there a section of the name with at least one setting, where libpq would look? It looks into $PGSERVICEFILE or
/// else ~/.pg_service.conf, and then, if that lacks the section, into the system's file, which lies in $PGSYSCONFDIR or
/// where Debian has it. What can't be read has no section; of a file that exceeds 1 MiB only the beginning counts.
[[nodiscard]] bool hasService(const std::string& name) noexcept;

}  // namespace quorvane::ServiceFile
