#include "base/Json.h"
#include "base/TerminalText.h"
#include "cli/CloudService.h"
#include "cli/CommandContext.h"
#include "cli/CommandGroup.h"
#include "cli/Commands.h"
#include "cli/OrNull.h"
#include "cli/Output.h"
#include "cloud/CloudKitDataStrategy.h"
#include "cloud/module/CloudModule.h"
#include "cloud/module/ServiceFile.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <optional>

namespace quorvane::cli {
namespace {

using platform::AccountStatus;

void refuseMissing(const std::string& service) {
    if (ServiceFile::hasService(service)) return;
    throw CommandError(ExitStatus::failed, missingServiceReason(service));
}

// init

struct InitOptions {
    std::string service = "quorvane-owner";
    std::vector<std::string> users;
    bool print = false;
};

std::string install(const InitOptions& options) {
    refuseMissing(options.service);
    const auto [before, now] = CloudModule::administration()->install(options.service, options.users);
    std::string out = before == now ? fmt::format("The schema has version {} already.\n", now)
                      : before == 0 ? fmt::format("The schema is installed, in version {}.\n", now)
                                    : fmt::format("The schema had version {} and has {} now.\n", before, now);
    for (const auto& user : options.users)
        out += fmt::format("The role {} may sync.\n", harmlessLine(user));
    return out;
}

void init(const InitOptions& options) {
    for (const auto& user : options.users)
        if (user.empty()) throw CommandError(ExitStatus::wrongUsage, "--user: a role has a name");
    Output output;
    output.write(options.print ? CloudModule::administration()->script(options.users) : install(options));
    output.finish();
}

// status

/// What is known without the server, with it, and of the account.
struct Status {
    bool isConfigured = false;
    AccountStatus account = AccountStatus::couldNotDetermine;
    std::string reason;
    std::optional<CloudDescription> server;
    std::optional<std::size_t> records;  ///< activity records of this user
};

constexpr const char* nameOf(AccountStatus status) {
    switch (status) {
    case AccountStatus::couldNotDetermine: return "couldNotDetermine";
    case AccountStatus::available: return "available";
    case AccountStatus::restricted: return "restricted";
    case AccountStatus::noAccount: return "noAccount";
    }
    return "";
}

Status findOut() {
    const auto cloud = CloudModule::cloudService();
    Status status{.isConfigured = cloud.isConfigured()};
    if (!status.isConfigured) return status;
    const auto session = cloud.makeContainer()->newSession();
    status.account = session->accountStatus(&status.reason);
    try {
        status.server = CloudModule::administration()->describe(CloudModule::serviceName);
        status.records = session->count(platform::DatabaseScope::privateData,
                                        std::string(CloudKitDataStrategy::PrivateData::activityRecord));
    } catch (const platform::CloudFailure&) {
        // The account's reason says why.
    }
    return status;
}

Json jsonOf(const CloudDescription& server) {
    return {{"host", server.host},
            {"database", server.database},
            {"version", server.serverVersion},
            {"tls", orNull(server.tls)},
            {"role", server.role},
            {"bound", !server.unboundBecause},
            {"schema", server.schemaVersion ? Json(*server.schemaVersion) : Json(nullptr)}};
}

/// "question  answer" in aligned lines.
void addLine(std::string& out, std::string_view question, std::string_view answer) {
    out += fmt::format("{:<8}  {}\n", question, harmlessLine(answer));
}

void addLines(std::string& out, const CloudDescription& server) {
    addLine(out, "server",
            fmt::format("PostgreSQL {} at {}, database {}", server.serverVersion, server.host, server.database));
    addLine(out, "schema", server.schemaVersion ? fmt::format("version {}", *server.schemaVersion) : "none");
    addLine(out, "role",
            server.unboundBecause
                ? fmt::format("{}, which sees everybody's records: {}", server.role, *server.unboundBecause)
                : server.role);
    addLine(out, "TLS", server.tls.empty() ? "no" : server.tls);
}

std::string textOf(const Status& status) {
    std::string out;
    addLine(out, "service",
            fmt::format("{} is {}", CloudModule::serviceName,
                        status.isConfigured ? "set up" : "not set up in libpq's service files"));
    if (!status.isConfigured) return out;
    const std::string account = nameOf(status.account);
    addLine(out, "account", status.reason.empty() ? account : fmt::format("{}: {}", account, status.reason));
    if (status.server) addLines(out, *status.server);
    if (status.records) addLine(out, "records", fmt::format("{}", *status.records));
    return out;
}

void tellStatus(const CommandContext& context) {
    const Status status = findOut();
    Output output;
    if (context.json)
        output.write(jsonText({{"configured", status.isConfigured},
                               {"account", nameOf(status.account)},
                               {"reason", orNull(status.reason)},
                               {"server", status.server ? jsonOf(*status.server) : Json(nullptr)},
                               {"records", status.records ? Json(*status.records) : Json(nullptr)}}) +
                     "\n");
    else
        output.write(textOf(status));
    output.finish();
}

// check

void check(const CommandContext& context) {
    refuseMissing(CloudModule::serviceName);
    const auto [server, findings] = CloudModule::administration()->examine(CloudModule::serviceName);
    Output output;
    if (context.json) {
        output.write(jsonText({{"server", jsonOf(server)}, {"findings", findings}}) + "\n");
    } else {
        std::string text;
        addLines(text, server);
        for (const auto& finding : findings)
            addLine(text, "finding", finding);
        if (findings.empty()) addLine(text, "check", "all is well");
        output.write(text);
    }
    output.finish();
    if (!findings.empty())
        throw CommandError(ExitStatus::failed, fmt::format("the cloud is not as it should be: {} {}", findings.size(),
                                                           findings.size() == 1 ? "finding" : "findings"));
}

}  // namespace

void addCloudCommand(CLI::App& app, CommandContext& context) {
    auto* group = addGroup(app, "cloud", "Set up, look at and check the database that records are synced with");
    const auto options = std::make_shared<InitOptions>();
    auto* initializing = addMember(*group, context, "init", "Install or renew the schema, as the database's owner",
                                   [options] { init(*options); });
    initializing
        ->add_option("--service", options->service, "The libpq service of the owner; quorvane-owner if left out")
        ->type_name("NAME");
    initializing->add_option("--user", options->users, "An existing role that may sync from then on; several times")
        ->type_name("ROLE")
        ->allow_extra_args(false);
    initializing->add_flag("--print", options->print, "Only print the SQL, for psql");
    addMember(*group, context, "status", "Tell who talks to which server, and whether it works",
              [&context] { tellStatus(context); });
    addMember(*group, context, "check", "Check role, schema and rights, and take a record there and back",
              [&context] { check(context); });
}

}  // namespace quorvane::cli
