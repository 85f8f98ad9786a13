#pragma once

#include "diagnostics/ConsoleSink.h"

namespace quorvane::cli {

/// The lines of a service on standard error while its work is under way. It hears when a part of the work failed:
/// services say so in a line and go on.
class ServiceConsole final : public ConsoleSink {
public:
    void write(std::string_view line) override;

    /// What is said from here on belongs to the end of the program and stays out. Throws `CommandError` if a part of
    /// the work failed.
    void finish();

private:
    StreamConsole console_{stderr};
    bool hasFailed_ = false;
    bool isFinished_ = false;
};

}  // namespace quorvane::cli
