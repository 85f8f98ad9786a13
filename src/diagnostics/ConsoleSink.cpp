#include "diagnostics/ConsoleSink.h"

#include "base/TerminalText.h"

#include <string>

namespace quorvane {

void StreamConsole::write(std::string_view line) {
    // One call for text and line end keeps lines of several threads whole.
    const std::string text = harmlessLine(line) + '\n';
    std::fwrite(text.data(), 1, text.size(), stream_);
    std::fflush(stream_);
}

}  // namespace quorvane
