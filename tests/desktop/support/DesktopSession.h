#pragma once

#include "desktop/support/ChildProcess.h"
#include "desktop/support/Environment.h"
#include "desktop/support/PrivateBus.h"
#include "support/TemporaryFolder.h"

#include <memory>
#include <string>
#include <vector>

namespace quorvane {

/// A desktop for one test: an X server, a window manager, two buses and a home directory of its own, and the
/// environment that leads there. Everything that runs in it is gone afterwards.
class DesktopSession {
public:
    struct Parts {
        bool display = true;
        bool windowManager = true;
        bool buses = true;
        bool isUntrusted = false;                  ///< the server hides from the test what `ssh -X` does not get
        std::vector<std::string> serverArguments;  ///< "-extension", "RECORD"
    };

    DesktopSession() : DesktopSession(Parts{}) {}
    explicit DesktopSession(const Parts& parts);

    /// For programs that start later, and for the test itself.
    [[nodiscard]] Environment& environment() { return environment_; }
    [[nodiscard]] std::filesystem::path runtimeDirectory() const { return folder_ / "run"; }
    [[nodiscard]] std::filesystem::path dataHome() const { return folder_ / "home/.local/share"; }
    [[nodiscard]] std::filesystem::path configHome() const { return folder_ / "home/.config"; }

    void startWindowManager();
    void killWindowManager() { windowManager_.reset(); }
    void killServer() { server_.reset(); }

private:
    void startServer(std::vector<std::string> arguments);
    void distrust();

    Environment environment_;
    TemporaryFolder folder_;
    std::unique_ptr<ChildProcess> server_;
    std::unique_ptr<ChildProcess> windowManager_;
    std::vector<std::unique_ptr<PrivateBus>> buses_;
};

}  // namespace quorvane
