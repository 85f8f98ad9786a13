#include "cli/Arguments.h"

#include "diagnostics/ConsoleSink.h"
#include "platform/linux/system/IniUserDefaults.h"
#include "rules/CategoryTagManager.h"
#include "store/StoredNames.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <fmt/format.h>
#include <limits>

namespace quorvane::cli {

CLI::Option* addTextOption(CLI::App& app, const std::string& name, const std::string& type, const std::string& help,
                           const std::function<void(const std::string&)>& read) {
    return app.add_option_function<std::string>(name, read, help)->type_name(type);
}

CLI::Option* addInstantOption(CLI::App& app, const std::string& name, std::optional<Date>& value,
                              const std::string& help) {
    const auto read = [&value, name](const std::string& text) {
        value = parseIso8601(text);
        if (!value)
            throw CLI::ValidationError(name, "\"" + text +
                                                 "\" is no instant like 2026-03-04T15:00:00Z or "
                                                 "2026-03-04T15:00:00+01:00");
    };
    return addTextOption(app, name, "INSTANT", help, read);
}

CLI::Option* addDateOption(CLI::App& app, const std::string& name, std::optional<CivilDate>& value,
                           const std::string& help) {
    const auto read = [&value, name](const std::string& text) {
        value = parseCivilDate(text);
        if (!value) throw CLI::ValidationError(name, "\"" + text + "\" is no day like 2026-03-04");
    };
    return addTextOption(app, name, "YYYY-MM-DD", help, read);
}

Uuid readUuid(const std::string& option, const std::string& text) {
    const auto uuid = Uuid::parse(text);
    if (!uuid)
        throw CLI::ValidationError(option, "\"" + text + "\" is no UUID like C0FEA20C-DB32-40C6-A0CC-CF6118205BB6");
    return *uuid;
}

CLI::Option* addIdArgument(CLI::App& app, Uuid& id) {
    const auto read = [&id](const std::string& text) { id = readUuid("ID", text); };
    return addTextOption(app, "ID", "", "Its id, as the list has it", read)->required();
}

std::size_t readCount(const std::string& option, const std::string& text) {
    constexpr std::size_t most = std::numeric_limits<std::int64_t>::max();
    std::size_t count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (error == std::errc::invalid_argument || end != text.data() + text.size())
        throw CLI::ValidationError(option, "\"" + text + "\" is no whole number from 0");
    return error == std::errc::result_out_of_range ? most : std::min(count, most);
}

std::int64_t readInteger(const std::string& option, const std::string& text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        throw CLI::ValidationError(option, "\"" + text + "\" is no whole number");
    return number;
}

double readNonNegative(const std::string& option, const std::string& text) {
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number) || number < 0)
        throw CLI::ValidationError(option, "\"" + text + "\" is no number from 0");
    return number;
}

void refuseChoice(const std::string& option, const std::string& text, const std::vector<std::string_view>& allowed) {
    throw CLI::ValidationError(option, fmt::format("\"{}\" is none of {}", text, fmt::join(allowed, ", ")));
}

std::string readCategory(const std::string& text) {
    platform::IniUserDefaults configuration;
    StreamConsole console(stderr);
    const auto own = CategoryTagManager(configuration, console).customCategories();
    if (std::ranges::find(own, text) != own.end()) return text;
    return StoredNames::storedCategory(text, Localization::fromEnvironment());
}

CLI::Option* addOutputOption(CLI::App& app, std::optional<std::string>& file) {
    return app.add_option("-o,--output", file, "Write to this file, which appears whole or not at all")
        ->type_name("FILE");
}

}  // namespace quorvane::cli
