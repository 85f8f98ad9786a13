#include "support/TextTable.h"

#include <fstream>
#include <stdexcept>

namespace quorvane {
namespace {

/// U+2400 to U+241F become U+0000 to U+001F, and U+2421 U+007F.
std::string withControls(std::string text) {
    for (auto picture = text.find("\xE2\x90"); picture != std::string::npos; picture = text.find("\xE2\x90", picture)) {
        const char code = static_cast<char>(text[picture + 2] & 0x3F);
        text.replace(picture, 3, 1, code == 0x21 ? '\x7F' : code);
    }
    return text;
}

}  // namespace

std::vector<std::vector<std::string>> textTable(const std::filesystem::path& file) {
    constexpr std::string_view arrow = "  =>  ";
    std::vector<std::vector<std::string>> rows;
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line.starts_with("-- ")) continue;
        auto& row = rows.emplace_back();
        for (auto end = line.find(arrow); end != std::string::npos; end = line.find(arrow)) {
            row.push_back(withControls(line.substr(0, end)));
            line.erase(0, end + arrow.size());
        }
        row.push_back(withControls(line));
    }
    if (rows.empty()) throw std::runtime_error("there is no table in " + file.string());
    return rows;
}

}  // namespace quorvane
