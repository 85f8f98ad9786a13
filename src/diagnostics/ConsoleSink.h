#pragma once

#include <cstdio>
#include <fmt/format.h>
#include <string_view>
#include <utility>

namespace quorvane {

/// Takes the lines that services print. They are output of the system: people read them, tests compare them.
class ConsoleSink {
public:
    virtual ~ConsoleSink() = default;

    /// One line, without its line end. From any thread.
    virtual void write(std::string_view line) = 0;

    /// Formats and writes one line.
    template <class... Args>
    void line(fmt::format_string<Args...> format, Args&&... args) {
        write(fmt::format(format, std::forward<Args>(args)...));
    }
};

/// Writes to a stream of the process and flushes after each line, so that a kill loses none.
class StreamConsole : public ConsoleSink {
public:
    explicit StreamConsole(std::FILE* stream) : stream_(stream) {}
    void write(std::string_view line) override;

private:
    std::FILE* stream_;
};

}  // namespace quorvane
