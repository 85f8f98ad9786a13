#pragma once

#include <cstddef>
#include <functional>
#include <istream>
#include <stdexcept>
#include <string>
#include <string_view>

/// The lines of a JSON Lines file, whoever takes them apart.
namespace quorvane::JsonLines {

/// A line that can't be used; `what()` is one line that begins with its number.
class Error : public std::runtime_error {
public:
    Error(std::size_t line, const std::string& cause);
    [[nodiscard]] std::size_t line() const { return line_; }

private:
    std::size_t line_;
};

/// Calls `take` for each line with its number, from 1. What it throws as `JsonLine::Error` or `JsonForm::Error` becomes
/// an `Error`, as do an empty line before the last one and input that can't be read.
void forEach(std::istream& input, const std::function<void(std::string_view line, std::size_t number)>& take);

}  // namespace quorvane::JsonLines
