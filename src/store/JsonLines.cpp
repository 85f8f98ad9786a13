#include "store/JsonLines.h"

#include "store/JsonForm.h"
#include "store/JsonLine.h"

#include <fmt/format.h>
#include <optional>

namespace quorvane::JsonLines {
namespace {

bool isBlank(std::string_view line) {
    return line.find_first_not_of(" \t\r") == std::string_view::npos;
}

}  // namespace

Error::Error(std::size_t line, const std::string& cause)
    : std::runtime_error(fmt::format("line {}: {}", line, cause)), line_(line) {}

void forEach(std::istream& input, const std::function<void(std::string_view, std::size_t)>& take) {
    std::string line;
    std::optional<std::size_t> blank;
    std::size_t number = 0;
    try {
        while (std::getline(input, line)) {
            ++number;
            if (blank) throw Error(*blank, "the line is empty");
            if (isBlank(line))
                blank = number;
            else
                take(line, number);
        }
    } catch (const JsonLine::Error& error) {
        throw Error(number, error.what());
    } catch (const JsonForm::Error& error) {
        throw Error(number, error.what());
    }
    // A device that fails in the middle must not pass for the end of the input.
    if (input.bad()) throw Error(number + 1, "the input can't be read");
}

}  // namespace quorvane::JsonLines
