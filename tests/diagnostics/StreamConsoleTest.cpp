#include "diagnostics/ConsoleSink.h"

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(StreamConsoleTest, WritesOneLineThatNoTerminalTakesForACommand) {
    char* text = nullptr;
    std::size_t size = 0;
    std::FILE* const stream = open_memstream(&text, &size);
    StreamConsole(stream).line("Finalized record for {}", "\x1b]0;Editor\x07\nand more");
    std::fclose(stream);
    EXPECT_STREQ(text, "Finalized record for  ]0;Editor  and more\n");
    std::free(text);
}

}  // namespace
}  // namespace quorvane
