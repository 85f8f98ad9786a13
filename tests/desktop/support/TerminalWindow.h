#pragma once

#include "desktop/support/ChildProcess.h"

#include <cstdlib>
#include <fstream>
#include <string>
#include <sys/stat.h>

namespace quorvane {

/// A terminal's window in the Wayland session, with a title that can change.
class TerminalWindow {
public:
    TerminalWindow(const std::string& application, const std::string& title)
        : pipe_(std::getenv("XDG_RUNTIME_DIR") + ("/" + application)), process_(foot(pipe_, application, title)) {}
    void setTitle(const std::string& title) const { std::ofstream(pipe_) << title << "\n"; }
    [[nodiscard]] pid_t pid() const { return process_.pid(); }

private:
    static std::vector<std::string> foot(const std::string& pipe, const std::string& application,
                                         const std::string& title) {
        ::mkfifo(pipe.c_str(), 0600);
        return {"foot",      "--app-id",
                application, "--title",
                title,       "sh",
                "-c",        "while true; do read -r title <" + pipe + R"( && printf '\033]0;%s\007' "$title"; done)"};
    }

    std::string pipe_;
    ChildProcess process_;
};

}  // namespace quorvane
