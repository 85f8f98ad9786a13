#pragma once

#include <string>
#include <vector>

namespace quorvane {

/// The statements that connections run while it lives, with their values filled in, in order. It hears only the
/// connections that are opened while it lives.
class SqlTrace {
public:
    SqlTrace();
    SqlTrace(const SqlTrace&) = delete;
    SqlTrace& operator=(const SqlTrace&) = delete;
    ~SqlTrace();

    void clear();

    /// Those that begin with the word: "UPDATE".
    [[nodiscard]] std::vector<std::string> statements(const std::string& word) const;
};

}  // namespace quorvane
