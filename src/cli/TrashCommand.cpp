#include "base/TerminalText.h"
#include "cli/Arguments.h"
#include "cli/CommandContext.h"
#include "cli/CommandGroup.h"
#include "cli/Commands.h"
#include "cli/JsonList.h"
#include "cli/Output.h"
#include "cli/TextTable.h"
#include "platform/Clock.h"
#include "session/LocalTime.h"
#include "store/RecordTrash.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fmt/format.h>

namespace quorvane::cli {
namespace {

using Content = std::vector<std::shared_ptr<TrashedRecord>>;

/// The members in the style of the rows of a dump; the record is kept as one.
std::string jsonOf(const TrashedRecord& trashed) {
    return fmt::format(R"({{"removed_at":"{}","pass":"{}","record":{}}})", iso8601Seconds(trashed.removedAt()),
                       trashed.pass(), trashed.record());
}

void writeTable(ModelContext& store, const Content& content, Output& output) {
    const LocalTime local;
    TextTable table({{.title = "REMOVED", .maxWidth = 19},
                     {.title = "PASS", .maxWidth = 12},
                     {.title = "START", .maxWidth = 19},
                     {.title = "END", .maxWidth = 19},
                     {.title = "APPLICATION", .maxWidth = 24, .minWidth = 8},
                     {.title = "TITLE", .maxWidth = 40, .minWidth = 8},
                     {.title = "ID", .maxWidth = 36}},
                    terminalWidth(), [&](std::string_view line) { output.write(line); });
    for (const auto& trashed : content) {
        const auto record = RecordTrash::recordOf(store, *trashed);
        table.add({local.dateAndTime(trashed->removedAt()), trashed->pass(), local.dateAndTime(record->startTime()),
                   record->endTime() ? local.dateAndTime(*record->endTime()) : "",
                   harmlessLine(record->appName().value_or("")), harmlessLine(record->windowTitle().value_or("")),
                   record->id().string()});
    }
    table.finish();
}

void list(const CommandContext& context) {
    ModelContext store(context.open(StoreAccess::read));
    const Content content = RecordTrash::content(store);
    Output output;
    if (context.json) {
        JsonList rows(output);
        for (const auto& trashed : content)
            rows.add(jsonOf(*trashed));
        rows.finish();
    } else {
        writeTable(store, content, output);
    }
    output.finish();
}

void report(const CommandContext& context, std::string_view key, std::size_t count) {
    Output output;
    if (context.json) output.write(fmt::format("{{\"{}\":{}}}\n", key, count));
    output.finish();
}

/// All of them or, where one can't come back, none.
void restore(const CommandContext& context, const std::vector<Uuid>& ids) {
    ModelContext store(context.open(StoreAccess::change));
    try {
        for (const Uuid& id : ids)
            RecordTrash::restore(store, id, platform::currentDate());
    } catch (const RecordTrash::Error& error) {
        throw CommandError(ExitStatus::failed, error.what());
    }
    store.save();
    report(context, "restored", ids.size());
}

void empty(const CommandContext& context) {
    ModelContext store(context.open(StoreAccess::change));
    const std::size_t count = RecordTrash::empty(store);
    store.save();
    report(context, "removed", count);
}

}  // namespace

void addTrashCommand(CLI::App& app, CommandContext& context) {
    auto* group = addGroup(app, "trash", "What the clean-up took out of the records in the last 30 days");
    const auto ids = std::make_shared<std::vector<Uuid>>();
    addMember(*group, context, "list", "List it, newest first", [&context] { list(context); });
    auto* restoring = addMember(*group, context, "restore", "Put records back; no clean-up touches them again",
                                [&context, ids] { restore(context, *ids); });
    restoring
        ->add_option_function<std::vector<std::string>>(
            "ID",
            [ids](const std::vector<std::string>& texts) {
                for (const std::string& text : texts)
                    if (const Uuid id = readUuid("ID", text); std::ranges::find(*ids, id) == ids->end())
                        ids->push_back(id);
            },
            "Which records")
        ->type_name("UUID")
        ->required();
    addMember(*group, context, "empty", "Remove all of it for good", [&context] { empty(context); });
}

}  // namespace quorvane::cli
