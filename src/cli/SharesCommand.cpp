#include "base/TerminalText.h"
#include "base/Text.h"
#include "cli/Arguments.h"
#include "cli/CloudService.h"
#include "cli/CommandContext.h"
#include "cli/CommandGroup.h"
#include "cli/Commands.h"
#include "cli/JsonList.h"
#include "cli/ObjectById.h"
#include "cli/Output.h"
#include "cli/ServiceConsole.h"
#include "cli/TextTable.h"
#include "cloud/CloudKitSyncError.h"
#include "cloud/ShareService.h"
#include "cloud/module/CloudModule.h"
#include "platform/Clock.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "session/LocalTime.h"
#include "store/JsonForm.h"

#include <CLI/CLI.hpp>
#include <algorithm>

namespace quorvane::cli {
namespace {

using Shares = std::vector<std::shared_ptr<ActivityShare>>;

std::string jsonOf(const ActivityShare& share) {
    std::string out;
    JsonForm::appendObject(out, share, {});
    return out;
}

std::string_view stateOf(const ActivityShare& share, Date now) {
    if (!share.isActive()) return "stopped";
    if (share.expiresAt() && *share.expiresAt() <= now) return "expired";
    return share.cloudKitRecordID().value_or("").empty() ? "not published" : "active";
}

void writeTable(const Shares& shares, Output& output) {
    const LocalTime local;
    const Date now = platform::currentDate();
    TextTable table({{.title = "TITLE", .maxWidth = 40, .minWidth = 8},
                     {.title = "STATE", .maxWidth = 13},
                     {.title = "CREATED", .maxWidth = 19},
                     {.title = "EXPIRES", .maxWidth = 19},
                     {.title = "PROJECTS", .maxWidth = 8, .isNumber = true},
                     {.title = "TOKEN", .maxWidth = 16},
                     {.title = "ID", .maxWidth = 36}},
                    terminalWidth(), [&](std::string_view line) { output.write(line); });
    for (const auto& share : shares)
        table.add({harmlessLine(share->title()), std::string(stateOf(*share, now)),
                   local.dateAndTime(share->createdAt()),
                   share->expiresAt() ? local.dateAndTime(*share->expiresAt()) : "",
                   share->isProjectSpecific() ? fmt::format("{}", share->projectCount()) : "all",
                   harmlessLine(share->shareToken()), share->id().string()});
    table.finish();
}

void write(const Shares& shares, bool asJson) {
    Output output;
    if (asJson) {
        JsonList rows(output);
        for (const auto& share : shares)
            rows.add(jsonOf(*share));
        rows.finish();
    } else {
        writeTable(shares, output);
    }
    output.finish();
}

/// The service over the cloud of this machine, and the loop on which it runs.
class Sharing {
public:
    explicit Sharing(const platform::CloudService& cloud)
        : hasCloud_(cloud.isConfigured()),
          service_(runLoop_, console_, localization_, hasCloud_ ? cloud.makeContainer() : nullptr) {}

    [[nodiscard]] bool hasCloud() const { return hasCloud_; }
    [[nodiscard]] const Shares& shares() const { return service_.shares(); }

    [[nodiscard]] std::shared_ptr<ActivityShare> create(const ShareService::NewShare& share, ModelContext& store) {
        std::shared_ptr<ActivityShare> created;
        const auto failure = run([&](const ShareService::Finished& finished) {
            service_.createShare(share, store, [&created, finished](const auto& made, const auto& failed) {
                created = made;
                finished(failed);
            });
        });
        throwIf(failure);
        return created;
    }

    void stop(const std::shared_ptr<ActivityShare>& share, ModelContext& store) {
        throwIf(run([&](const ShareService::Finished& finished) { service_.stopShare(share, store, finished); }));
    }

    /// How it ended: what the store holds is listed also where the cloud can't be asked.
    [[nodiscard]] std::exception_ptr load(ModelContext& store) {
        return run([&](const ShareService::Finished& finished) { service_.loadShares(store, finished); });
    }

    void throwIf(const std::exception_ptr& failure) const {
        if (!failure) return;
        try {
            std::rethrow_exception(failure);
        } catch (const CloudKitSyncError& error) {
            throw CommandError(ExitStatus::failed,
                               reasonOf(hasCloud_ ? error
                                                  : CloudKitSyncError(error.code(), {},
                                                                      missingServiceReason(CloudModule::serviceName))));
        }
    }

private:
    std::exception_ptr run(const std::function<void(const ShareService::Finished&)>& begin) {
        std::exception_ptr failure;
        runUntilFinished(runLoop_, [&](const std::function<void()>& finish) {
            begin([&failure, finish](const std::exception_ptr& failed) {
                failure = failed;
                finish();
            });
        });
        console_.finish();
        return failure;
    }

    bool hasCloud_;
    platform::QtRunLoop runLoop_;
    ServiceConsole console_;
    Localization localization_ = Localization::fromEnvironment();
    ShareService service_;
};

void listShares(const CommandContext& context) {
    const auto cloud = CloudModule::cloudService();
    ModelContext store(context.open(cloud.isConfigured() ? StoreAccess::change : StoreAccess::read));
    Sharing sharing(cloud);
    const auto failure = sharing.load(store);
    write(sharing.shares(), context.json);
    sharing.throwIf(failure);
}

void create(const CommandContext& context, const ShareService::NewShare& share) {
    if (text::trimmedWithNewlines(share.title).empty())
        throw CommandError(ExitStatus::failed, "the title can't be empty");
    if (share.expiresAt && *share.expiresAt <= platform::currentDate())
        throw CommandError(ExitStatus::failed, fmt::format("{} has passed", iso8601Seconds(*share.expiresAt)));
    ModelContext store(context.open(StoreAccess::change));
    for (const Uuid& project : share.projectIds)
        (void)objectById<Project>(store, project);
    const auto created = Sharing(CloudModule::cloudService()).create(share, store);
    Output output;
    output.write((context.json ? jsonOf(*created) : created->shareToken()) + "\n");
    output.finish();
}

std::shared_ptr<ActivityShare> shareById(ModelContext& store, const Uuid& id) {
    const auto found = store.fetch<ActivityShare>({.predicate = field(&ActivityShare::id) == id, .limit = 1});
    if (found.empty()) throw CommandError(ExitStatus::failed, fmt::format("there is no share {}", id.string()));
    return found.front();
}

void stop(const CommandContext& context, const Uuid& id) {
    ModelContext store(context.open(StoreAccess::change));
    const auto share = shareById(store, id);
    Sharing sharing(CloudModule::cloudService());
    sharing.stop(share, store);
    if (!sharing.hasCloud() && !share->cloudKitRecordID().value_or("").empty())
        throw CommandError(ExitStatus::failed, fmt::format("the share is stopped here, but its public record stays: {}",
                                                           missingServiceReason(CloudModule::serviceName)));
}

void addCreateOptions(CLI::App& command, ShareService::NewShare& share) {
    command.add_option("--title", share.title, "How the share is called")->type_name("TITLE")->required();
    addInstantOption(command, "--expires", share.expiresAt, "Readers see it until then; else until it is stopped");
    const auto addProjects = [&share](const std::vector<std::string>& texts) {
        for (const std::string& text : texts) {
            const Uuid id = readUuid("--project", text);
            if (std::ranges::find(share.projectIds, id) == share.projectIds.end()) share.projectIds.push_back(id);
        }
    };
    command
        .add_option_function<std::vector<std::string>>("--project", addProjects,
                                                       "Share records of this project alone; may be repeated")
        ->type_name("UUID")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

}  // namespace

void addSharesCommand(CLI::App& app, CommandContext& context) {
    auto* group = addGroup(app, "shares", "List, create and stop shares of records in the cloud");
    const auto share = std::make_shared<ShareService::NewShare>();
    const auto id = std::make_shared<Uuid>();
    addMember(*group, context, "list", "List all shares, newest first", [&context] { listShares(context); });
    auto* creating = addMember(*group, context, "create", "Publish a share and print its token",
                               [&context, share] { create(context, *share); });
    addCreateOptions(*creating, *share);
    auto* stopping = addMember(*group, context, "stop", "Take a share out of the cloud for good",
                               [&context, id] { stop(context, *id); });
    addIdArgument(*stopping, *id);
}

}  // namespace quorvane::cli
