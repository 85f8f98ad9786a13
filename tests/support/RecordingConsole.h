#pragma once

#include "diagnostics/ConsoleSink.h"

#include <mutex>
#include <string>
#include <vector>

namespace quorvane {

/// Keeps the lines that services print.
class RecordingConsole : public ConsoleSink {
public:
    void write(std::string_view line) override;

    /// All lines since the last `clear()`.
    [[nodiscard]] std::vector<std::string> lines() const;
    void clear();

private:
    mutable std::mutex mutex_;  ///< guards `lines_`
    std::vector<std::string> lines_;
};

}  // namespace quorvane
