#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quorvane::platform {

/// A program that shows windows.
struct RunningApplication {
    std::int64_t processIdentifier = 0;           ///< 0 where nobody tells, < 0 for one of another machine
    std::optional<std::string> bundleIdentifier;  ///< as `ForegroundApplication` has it
    std::optional<std::string> localizedName;
    std::string windowTitle;  ///< of the window in front; empty for none
    /// Nobody says that the window is none of private browsing, and its title would not tell: that is nobody's
    /// business.
    bool mayBePrivate = false;
    friend bool operator==(const RunningApplication&, const RunningApplication&) = default;
};

/// Which applications run. From any thread; each answer is of the moment of the call and comes within 300 ms.
class RunningApplications {
public:
    virtual ~RunningApplications() = default;

    /// The application whose window has the focus; none if no window has it or nobody can tell.
    [[nodiscard]] virtual std::optional<RunningApplication> frontmost() = 0;

    /// Has an application with exactly this identifier a window?
    [[nodiscard]] virtual bool isRunning(const std::string& bundleIdentifier) = 0;

    /// Has the process ended?
    [[nodiscard]] virtual bool isTerminated(std::int64_t processIdentifier) = 0;
};

}  // namespace quorvane::platform
