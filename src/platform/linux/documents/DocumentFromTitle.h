#pragma once

#include "platform/linux/bus/SessionBusQuestions.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace quorvane::platform {

/// Whose window it is.
struct DocumentOwner {
    pid_t pid = 0;                      ///< 0 where nobody tells: then the title and what is recent have to do
    std::vector<std::string> programs;  ///< under what names it may have noted what it opened
};

/// The document that a window shows, by the surest sign that leads to an existing file: a path in its title, a file
/// that its process has open, the list of recent documents, the directory of a terminal, the arguments of the process,
/// the track that it plays. `documentName` is the document's name if the title tells one. An empty path if nothing
/// tells.
[[nodiscard]] std::filesystem::path documentFromTitle(SessionBusQuestions& bus, const DocumentOwner& owner,
                                                      std::string_view title, std::string_view documentName);

}  // namespace quorvane::platform
