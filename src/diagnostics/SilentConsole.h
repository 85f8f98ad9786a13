#pragma once

#include "diagnostics/ConsoleSink.h"

namespace quorvane {

/// For lines that nobody is to read.
class SilentConsole final : public ConsoleSink {
public:
    void write(std::string_view) override {}
};

}  // namespace quorvane
