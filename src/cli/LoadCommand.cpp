#include "base/Json.h"
#include "cli/CommandContext.h"
#include "cli/Commands.h"
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

/// Takes back a store that this command made and that got nothing into it. One that somebody else has opened meanwhile
/// stays: it does not let go of its log.
void removeUnused(std::unique_ptr<Database> database, const std::filesystem::path& file) {
    try {
        database->execute("PRAGMA journal_mode = DELETE");
        database.reset();
        std::error_code error;
        std::filesystem::remove(file, error);
    } catch (const StoreError&) {
        // It has a user now.
    }
}

StoreLoad::Counts loadFrom(std::istream& input, const std::string& name, const CommandContext& context) {
    const auto file = context.storeFile();
    std::error_code unreachable;
    const bool isNew = !std::filesystem::exists(file, unreachable) && !unreachable;
    auto database = context.openForWriting();
    Progress progress("lines");
    try {
        return StoreLoad::read(*database, input, [&](std::size_t line) { progress.show(line); });
    } catch (const std::exception& error) {
        if (isNew) removeUnused(std::move(database), file);
        const bool isLine = dynamic_cast<const StoreLoad::Error*>(&error) != nullptr;
        throw CommandError(ExitStatus::failed, isLine ? fmt::format("{}: {}", name, error.what()) : error.what());
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
