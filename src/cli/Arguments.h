#pragma once

#include "base/Date.h"
#include "base/Iso8601.h"
#include "base/RawValue.h"
#include "base/Uuid.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

/// Options whose values are more than texts. What can't be read is wrong usage and says which form is wanted. The
/// variables must outlive the application.
namespace quorvane::cli {

/// An option whose text goes to `read`.
CLI::Option* addTextOption(CLI::App& app, const std::string& name, const std::string& type, const std::string& help,
                           const std::function<void(const std::string&)>& read);

CLI::Option* addInstantOption(CLI::App& app, const std::string& name, std::optional<Date>& value,
                              const std::string& help);

/// "--date" and its like: a day, "YYYY-MM-DD", which the calendar of the user's zone turns into instants.
CLI::Option* addDateOption(CLI::App& app, const std::string& name, std::optional<CivilDate>& value,
                           const std::string& help);

/// "ID": the object that the command is about.
CLI::Option* addIdArgument(CLI::App& app, Uuid& id);

/// The value of the option.
[[nodiscard]] Uuid readUuid(const std::string& option, const std::string& text);

/// A number of rows, from 0; more than any store can hold counts as that.
[[nodiscard]] std::size_t readCount(const std::string& option, const std::string& text);

/// A whole number, and a finite one from 0.
[[nodiscard]] std::int64_t readInteger(const std::string& option, const std::string& text);
[[nodiscard]] double readNonNegative(const std::string& option, const std::string& text);

/// The text is none of the allowed ones: wrong usage that names them.
[[noreturn]] void refuseChoice(const std::string& option, const std::string& text,
                               const std::vector<std::string_view>& allowed);

/// The case of a stored enumeration by its stored text, letter for letter.
template <class Enumeration>
[[nodiscard]] Enumeration readCase(const std::string& option, const std::string& text) {
    if (const auto found = fromRawValue<Enumeration>(text)) return *found;
    std::vector<std::string_view> allowed;
    for (const auto& [value, name] : RawValues<Enumeration>::table)
        allowed.push_back(name);
    refuseChoice(option, text, allowed);
}

/// The stored name of a category, which people give as they read it or as it is stored.
[[nodiscard]] std::string readCategory(const std::string& text);

/// "-o FILE": where the data goes; none for standard output.
CLI::Option* addOutputOption(CLI::App& app, std::optional<std::string>& file);

}  // namespace quorvane::cli
