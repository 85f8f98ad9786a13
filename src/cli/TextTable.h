#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::cli {

/// The width of the terminal in columns; none when standard output is something else.
[[nodiscard]] std::optional<int> terminalWidth();

/// Rows in aligned columns under their titles. The first rows decide how wide the columns are, so that the number of
/// rows does not matter. For a terminal, what is too long is cut; else everything stays.
class TextTable {
public:
    struct Column {
        std::string title;
        int maxWidth;      ///< > 0; longer values don't widen the column
        int minWidth = 0;  ///< when the terminal is narrow; 0: the column keeps its width
        bool isNumber = false;
    };

    TextTable(std::vector<Column> columns, std::optional<int> terminalWidth,
              std::function<void(std::string_view)> write);

    /// One value for each column, in one line each.
    void add(std::vector<std::string> row);
    void finish();

private:
    void settleWidths();
    void narrowTo(int width);
    [[nodiscard]] int* widestColumn();
    void writeRow(const std::vector<std::string>& row);

    std::vector<Column> columns_;
    std::optional<int> terminalWidth_;
    std::function<void(std::string_view)> write_;
    std::vector<std::vector<std::string>> waiting_;
    std::vector<int> widths_;  ///< empty until settled
};

}  // namespace quorvane::cli
