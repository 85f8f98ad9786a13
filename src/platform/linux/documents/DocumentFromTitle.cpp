#include "platform/linux/documents/DocumentFromTitle.h"

#include "platform/linux/bus/MprisTrack.h"
#include "platform/linux/documents/DocumentTitle.h"
#include "platform/linux/documents/OpenFiles.h"
#include "platform/linux/documents/RecentDocuments.h"
#include "platform/linux/documents/TerminalDirectory.h"
#include "platform/linux/system/XdgPaths.h"

namespace quorvane::platform {

std::filesystem::path documentFromTitle(SessionBusQuestions& bus, const DocumentOwner& owner, std::string_view title,
                                        std::string_view documentName) {
    const auto pid = owner.pid;
    for (const auto& path : DocumentTitle::paths(title, XdgPaths::home().native()))
        if (OpenFiles::isFile(path)) return path;
    if (auto file = OpenFiles::namedByTitle(pid, title); !file.empty()) return file;
    // Before the directory of a terminal, since editors too have terminals in them.
    if (auto file = RecentDocuments::fileNamedByTitle(title, owner.programs); !file.empty()) return file;
    if (auto directory = terminalDirectory(pid, title); pid > 0 && !directory.empty()) return directory;
    if (auto file = OpenFiles::argument(pid, title, !documentName.empty()); !file.empty()) return file;
    // The only step that waits for another program, and so the last one.
    const auto track = mprisTrack(bus, pid);
    return track && OpenFiles::isFile(track->file) ? std::filesystem::path(track->file) : std::filesystem::path();
}

}  // namespace quorvane::platform
