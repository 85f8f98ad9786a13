#include "cli/TextTable.h"

#include "base/Text.h"

#include <algorithm>
#include <numeric>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

namespace quorvane::cli {
namespace {

constexpr std::size_t rowsThatDecide = 500;
constexpr std::string_view columnGap = "  ";

}  // namespace

std::optional<int> terminalWidth() {
    winsize size{};
    if (::isatty(STDOUT_FILENO) != 1 || ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0)
        return std::nullopt;
    return size.ws_col;
}

TextTable::TextTable(std::vector<Column> columns, std::optional<int> terminalWidth,
                     std::function<void(std::string_view)> write)
    : columns_(std::move(columns)), terminalWidth_(terminalWidth), write_(std::move(write)) {}

void TextTable::add(std::vector<std::string> row) {
    if (!widths_.empty()) return writeRow(row);
    waiting_.push_back(std::move(row));
    if (waiting_.size() == rowsThatDecide) settleWidths();
}

void TextTable::finish() {
    if (widths_.empty()) settleWidths();
}

void TextTable::settleWidths() {
    std::vector<std::string> titles;
    for (const Column& column : columns_)
        titles.push_back(column.title);
    waiting_.insert(waiting_.begin(), std::move(titles));
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        int width = 0;
        for (const auto& row : waiting_)
            width = std::max(width, text::displayWidth(row[i]));
        widths_.push_back(std::min(width, columns_[i].maxWidth));
    }
    if (terminalWidth_) narrowTo(*terminalWidth_);
    for (const auto& row : std::exchange(waiting_, {}))
        writeRow(row);
}

/// Takes one column of the terminal after the other from the widest that may be narrower.
void TextTable::narrowTo(int width) {
    const int gaps = static_cast<int>((columns_.size() - 1) * columnGap.size());
    for (int excess = std::accumulate(widths_.begin(), widths_.end(), gaps) - width; excess > 0; --excess) {
        int* widest = widestColumn();
        if (widest == nullptr) return;
        --*widest;
    }
}

/// Of those that may be narrower; none once all are at their least.
int* TextTable::widestColumn() {
    int* widest = nullptr;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const int least = columns_[i].minWidth;
        if (least == 0 || widths_[i] <= least) continue;
        if (widest == nullptr || widths_[i] > *widest) widest = &widths_[i];
    }
    return widest;
}

void TextTable::writeRow(const std::vector<std::string>& row) {
    std::string line;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const std::string cell = terminalWidth_ ? text::fittedTo(row[i], widths_[i]) : row[i];
        const auto missing = static_cast<std::size_t>(std::max(0, widths_[i] - text::displayWidth(cell)));
        if (i != 0) line += columnGap;
        if (columns_[i].isNumber) line.append(missing, ' ');
        line += cell;
        if (!columns_[i].isNumber) line.append(missing, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    write_(line + '\n');
}

}  // namespace quorvane::cli
