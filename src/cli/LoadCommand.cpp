#include "base/Json.h"
#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/NewStore.h"
#include "cli/Output.h"
#include "cli/Progress.h"
#include "store/StoreLoad.h"

#include <CLI/CLI.hpp>
#include <cerrno>
#include <fmt/format.h>
#include <fstream>
#include <iostream>
#include <system_error>

namespace quorvane::cli {
namespace {

StoreLoad::Counts loadInto(Database& database, std::istream& input) {
    Progress progress("lines");
    return StoreLoad::read(database, input, [&](std::size_t line) { progress.show(line); });
}

StoreLoad::Counts loadIntoNew(const std::filesystem::path& file, std::istream& input) {
    NewStore store(file);
    try {
        auto counts = loadInto(store.database(), input);
        store.takePlace();
        return counts;
    } catch (const StoreError& error) {
        throw CommandError(ExitStatus::failed, store.named(error.what()));
    }
}

StoreLoad::Counts loadFrom(std::istream& input, const std::string& name, const CommandContext& context) {
    const auto file = context.storeFile();
    std::error_code unreachable;
    const bool isNew =
        std::filesystem::symlink_status(file, unreachable).type() == std::filesystem::file_type::not_found;
    try {
        return isNew ? loadIntoNew(file, input) : loadInto(*context.open(StoreAccess::write), input);
    } catch (const StoreLoad::Error& error) {
        throw CommandError(ExitStatus::failed, fmt::format("{}: {}", name, error.what()));
    }
}

StoreLoad::Counts load(const std::string& name, const CommandContext& context) {
    if (name == "-") return loadFrom(std::cin, "standard input", context);
    std::error_code unreachable;
    if (std::filesystem::is_directory(name, unreachable))
        throw CommandError(ExitStatus::failed, fmt::format("{}: this is a directory", name));
    std::ifstream input(name, std::ios::binary);
    if (!input)
        throw CommandError(ExitStatus::failed, fmt::format("{}: {}", name, std::generic_category().message(errno)));
    return loadFrom(input, name, context);
}

void printCounts(const StoreLoad::Counts& counts) {
    Json loaded = Json::object();
    for (const auto& [entity, count] : counts)
        loaded[entity] = count;
    Output output;
    output.write(jsonText({{"loaded", std::move(loaded)}}) + "\n");
    output.finish();
}

}  // namespace

void addLoadCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("load", "Insert or replace the rows of JSON Lines, all or none");
    const auto name = std::make_shared<std::string>();
    command->add_option("FILE", *name, "What to read; - for standard input")->required();
    command->callback([&context, name] { context.command = [&context, name] { printCounts(load(*name, context)); }; });
}

}  // namespace quorvane::cli
