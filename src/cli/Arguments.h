#pragma once

#include "base/Date.h"
#include "base/Uuid.h"

#include <optional>
#include <string>

namespace CLI {
class App;
class Option;
}  // namespace CLI

/// Options whose values are more than texts. What can't be read is wrong usage and says which form is wanted. The
/// variables must outlive the application.
namespace quorvane::cli {

CLI::Option* addInstantOption(CLI::App& app, const std::string& name, std::optional<Date>& value,
                              const std::string& help);

/// The value of the option.
[[nodiscard]] Uuid readUuid(const std::string& option, const std::string& text);

/// A number of rows, from 0; more than any store can hold counts as that.
[[nodiscard]] std::size_t readCount(const std::string& option, const std::string& text);

/// "-o FILE": where the data goes; none for standard output.
CLI::Option* addOutputOption(CLI::App& app, std::optional<std::string>& file);

}  // namespace quorvane::cli
