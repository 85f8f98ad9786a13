#pragma once

#include "platform/linux/loop/Deadline.h"

#include <QStringList>
#include <string>

namespace quorvane::platform {

struct ProgramOutput {
    bool hasSucceeded = false;
    std::string text;     ///< of standard output
    std::string problem;  ///< why it has not succeeded, in one line
};

/// Runs a program to its end, or to the deadline, which ends it. From any thread.
[[nodiscard]] ProgramOutput outputOf(const char* program, const QStringList& arguments, const Deadline& deadline);

}  // namespace quorvane::platform
