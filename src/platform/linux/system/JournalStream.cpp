#include "platform/linux/system/JournalStream.h"

#include <cstdlib>
#include <fmt/format.h>
#include <sys/stat.h>

namespace quorvane::platform {

// The service manager tells device and inode of the stream that it has opened, so that a stream that was led elsewhere
// since is not taken for it.
bool leadsToJournal(int descriptor) {
    const char* const stream = std::getenv("JOURNAL_STREAM");
    struct stat status {};
    return stream != nullptr && ::fstat(descriptor, &status) == 0 &&
           fmt::format("{}:{}", status.st_dev, status.st_ino) == stream;
}

}  // namespace quorvane::platform
