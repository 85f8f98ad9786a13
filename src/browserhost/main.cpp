#include "browserhost/BrowserHost.h"
#include "browserhost/BrowserSocket.h"

#include <csignal>
#include <cstdio>
#include <fmt/format.h>
#include <unistd.h>

/// A browser starts this program for its extension, with arguments that say for which; they don't matter here.
int main() {
    std::signal(SIGPIPE, SIG_IGN);
    try {
        quorvane::BrowserHost(STDIN_FILENO, quorvane::BrowserSocket::path(), ::getppid()).run();
        return 0;
    } catch (const std::exception& error) {
        fmt::print(stderr, "quorvane-browser-host: {}\n", error.what());
        return 1;
    }
}
