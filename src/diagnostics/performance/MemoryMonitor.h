#pragma once

#include "platform/ProcessUsage.h"
#include "platform/RunLoop.h"
#include "platform/SystemLog.h"

#include <memory>

namespace quorvane {

/// Writes to the system's log, and nowhere else, what memory the process holds: for developers. Main thread only.
class MemoryMonitor {
public:
    /// Where its lines belong; not where those of the main logger do.
    static constexpr const char* subsystem = "com.marvolt.app";
    static constexpr const char* category = "MemoryMonitor";
    static constexpr Seconds defaultInterval = 30s;

    /// `systemLog` carries the names above. All outlive it.
    MemoryMonitor(platform::RunLoop& runLoop, platform::SystemLog& systemLog, const platform::ProcessUsage& usage);
    MemoryMonitor(const MemoryMonitor&) = delete;
    MemoryMonitor& operator=(const MemoryMonitor&) = delete;
    ~MemoryMonitor();

    /// Writes a line each `interval` (> 0 s), in place of what ran before.
    void start(Seconds interval = defaultInterval);
    void stop();

private:
    void write();

    platform::RunLoop& runLoop_;
    platform::SystemLog& systemLog_;
    const platform::ProcessUsage& usage_;
    std::unique_ptr<platform::Timer> timer_;
};

}  // namespace quorvane
