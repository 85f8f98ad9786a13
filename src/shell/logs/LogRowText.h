#pragma once

#include "diagnostics/LogEntry.h"

#include <QString>

/// The parts of an entry as a row shows them.
namespace quorvane::LogRowText {

/// "09:00:00.000", in the local time zone.
[[nodiscard]] QString time(const LogEntry& entry);
/// "WARNING"; the same in every language.
[[nodiscard]] QString level(LogLevel level);
/// The message on one line.
[[nodiscard]] QString message(const LogEntry& entry);
/// Time, level, module and message, for assistive technology.
[[nodiscard]] QString spoken(const LogEntry& entry);

}  // namespace quorvane::LogRowText
