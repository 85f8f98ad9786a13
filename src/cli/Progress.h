#pragma once

#include <cstddef>
#include <string>

namespace quorvane::cli {

/// Shows on standard error how far long work has come, where that is a terminal, and takes it away at the end.
class Progress {
public:
    /// `unit` names what is counted: "rows".
    explicit Progress(std::string unit);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    void show(std::size_t count);

private:
    std::string unit_;
    std::size_t shown_ = 0;
    bool isTerminal_;
};

}  // namespace quorvane::cli
