#include "desktop/support/TestWindow.h"

#include <fcntl.h>
#include <unistd.h>

/// quorvane_window_of INSTANCE CLASS TITLE COMMAND...: shows a window and becomes the command, which then is the
/// process that has made the window.
int main(int count, char** arguments) {
    if (count < 5) return 2;
    new quorvane::TestWindow({.instance = arguments[1], .wmClass = arguments[2], .title = arguments[3]});
    for (int descriptor = STDERR_FILENO + 1; descriptor < 64; ++descriptor)
        fcntl(descriptor, F_SETFD, 0);
    execvp(arguments[4], arguments + 4);
    return 127;
}
