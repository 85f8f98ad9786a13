#include "cli/Arguments.h"

#include "base/Iso8601.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <limits>

namespace quorvane::cli {

CLI::Option* addInstantOption(CLI::App& app, const std::string& name, std::optional<Date>& value,
                              const std::string& help) {
    const auto read = [&value, name](const std::string& text) {
        value = parseIso8601(text);
        if (!value)
            throw CLI::ValidationError(name, "\"" + text +
                                                 "\" is no instant like 2026-03-04T15:00:00Z or "
                                                 "2026-03-04T15:00:00+01:00");
    };
    return app.add_option_function<std::string>(name, read, help)->type_name("INSTANT");
}

Uuid readUuid(const std::string& option, const std::string& text) {
    const auto uuid = Uuid::parse(text);
    if (!uuid)
        throw CLI::ValidationError(option, "\"" + text + "\" is no UUID like C0FEA20C-DB32-40C6-A0CC-CF6118205BB6");
    return *uuid;
}

std::size_t readCount(const std::string& option, const std::string& text) {
    constexpr std::size_t most = std::numeric_limits<std::int64_t>::max();
    std::size_t count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (error == std::errc::invalid_argument || end != text.data() + text.size())
        throw CLI::ValidationError(option, "\"" + text + "\" is no whole number from 0");
    return error == std::errc::result_out_of_range ? most : std::min(count, most);
}

CLI::Option* addOutputOption(CLI::App& app, std::optional<std::string>& file) {
    return app.add_option("-o,--output", file, "Write to this file, which appears whole or not at all")
        ->type_name("FILE");
}

}  // namespace quorvane::cli
