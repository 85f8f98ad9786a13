#include "base/Iso8601.h"
#include "base/Json.h"
#include "base/TerminalText.h"
#include "base/Text.h"
#include "capture/CaptureHealth.h"
#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/OrNull.h"
#include "cli/Output.h"
#include "cli/SightText.h"
#include "platform/Clock.h"
#include "platform/linux/process/ProcessLock.h"
#include "platform/linux/session/WindowSources.h"
#include "session/CaptureNote.h"
#include "session/LocalTime.h"
#include "session/TrackerLock.h"
#include "store/ActivityRecord.h"
#include "store/JsonForm.h"
#include "store/ModelContext.h"
#include "tracking/PresenceNote.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <fmt/format.h>

namespace quorvane::cli {
namespace {

/// A tracker that lives renews its open record at least once a minute.
constexpr Seconds heartbeatValidity = 120s;

struct Status {
    bool isTracking = false;
    std::shared_ptr<ActivityRecord> openRecord;
    std::string openRecordJson = "null";
    Seconds today{};
    std::size_t todayRecords = 0;
    std::optional<Date> pausedSince;       ///< by the user
    std::optional<Date> awaySince;         ///< nobody is there; a tracker waits
    std::optional<CaptureHealth> trouble;  ///< what can't be seen; none: all can, or nobody knows more
};

/// What the tracker of the store has found, who may sit in another session than we do; where nobody tracks, what a
/// tracker would find that was started here.
std::optional<CaptureHealth> captureTrouble(ModelContext& store, bool isTrackerThere) {
    if (isTrackerThere) return CaptureNote::kept(store);
    const platform::Channel channel = platform::frontWindowChannel();
    auto health = captureHealth({&channel, 1});
    return health.reason.empty() ? std::nullopt : std::optional(std::move(health));
}

Status readStatus(ModelContext& store, Date now, const Calendar& calendar) {
    Status status;
    const FetchDescriptor<ActivityRecord> open{
        .predicate = field(&ActivityRecord::endTime).isNone(),
        .sort = {descending(&ActivityRecord::startTime), ascending(&ActivityRecord::id)},
        .limit = 1};
    if (const auto found = store.fetch(open); !found.empty()) {
        status.openRecord = found.front();
        status.isTracking = now - status.openRecord->updatedAt() < heartbeatValidity;
        JsonForm::RowIds projects;
        if (const auto project = status.openRecord->project()) projects.emplace(project->objectId(), project->id());
        const auto& entity = ActivityRecord::description();
        store.scan(open, JsonForm::attributeNames(entity), [&](const Row& row) {
            status.openRecordJson.clear();
            JsonForm::appendObject(status.openRecordJson, entity, row, projects);
            return false;
        });
    }
    if (!status.isTracking) status.pausedSince = PresenceNote::pausedSince(store);
    const auto today = calendar.day(now);
    const auto start = field(&ActivityRecord::startTime);
    store.scan<ActivityRecord>({.predicate = start >= today.start && start < today.end}, {"start_time", "end_time"},
                               [&](const Row& row) {
                                   const Date begin = dateFromMicroseconds(row.integer(0));
                                   const Date end = row.isNull(1) ? now : dateFromMicroseconds(row.integer(1));
                                   status.today += std::max(Seconds{0}, end - begin);
                                   ++status.todayRecords;
                                   return true;
                               });
    return status;
}

/// Without the noise that adding up leaves below a microsecond.
double wholeMicroseconds(Seconds duration) {
    return std::round(duration.count() * 1e6) / 1e6;
}

std::string jsonOf(const Status& status) {
    Json capture = {{"can_see", !status.trouble || status.trouble->canSee()}, {"sees", nullptr}, {"in_part", false},
                    {"reason", nullptr}, {"remedy", nullptr}};
    if (status.trouble) {
        capture["sees"] = nameOf(status.trouble->sight);
        capture["in_part"] = status.trouble->isPartial;
        capture["reason"] = orNull(status.trouble->reason);
        capture["remedy"] = orNull(status.trouble->remedy);
    }
    const auto instant = [](const std::optional<Date>& date) {
        return jsonText(date ? Json(iso8601Microseconds(*date)) : Json());
    };
    return fmt::format(R"({{"tracking":{},"paused_since":{},"away_since":{},"open_record":{},)"
                       R"("today_seconds":{},"today_records":{},"capture":{}}})"
                       "\n",
                       status.isTracking, instant(status.pausedSince), instant(status.awaySince), status.openRecordJson,
                       text::shortest(wholeMicroseconds(status.today)), status.todayRecords, jsonText(capture));
}

std::string trackingText(const Status& status, const LocalTime& local) {
    if (status.isTracking) return "yes";
    if (status.pausedSince) return "no, paused by you since " + local.dateAndTime(*status.pausedSince);
    if (status.awaySince) return "no, away since " + local.dateAndTime(*status.awaySince);
    return "no";
}

std::string textOf(const Status& status, const LocalTime& local, Date now) {
    std::string out = fmt::format("Tracking:     {}\n", trackingText(status, local));
    if (const auto& trouble = status.trouble) {
        out += fmt::format("Can see:      {}: {}\n", sightInWords(*trouble), harmlessLine(trouble->reason));
        if (!trouble->remedy.empty()) out += fmt::format("              -> {}\n", harmlessLine(trouble->remedy));
    }
    if (const auto& open = status.openRecord) {
        const std::string title = harmlessLine(open->windowTitle().value_or(""));
        out += fmt::format("Open record:  {}{}{}, since {} ({})\n", harmlessLine(open->appName().value_or("?")),
                           title.empty() ? "" : " — ", title, local.dateAndTime(open->startTime()),
                           durationText(now - open->startTime()));
    } else {
        out += "Open record:  none\n";
    }
    return out + fmt::format("Today:        {} in {} {}\n", durationText(status.today), status.todayRecords,
                             status.todayRecords == 1 ? "record" : "records");
}

void printStatus(const CommandContext& context) {
    ModelContext store(context.open(StoreAccess::read));
    const Date now = platform::currentDate();
    const LocalTime local;
    Status status = readStatus(store, now, local.calendar());
    const bool isTrackerThere =
        status.isTracking || platform::ProcessLock::isHeld(trackerLockFile(context.storeFile()));
    status.trouble = captureTrouble(store, isTrackerThere);
    // A record that is being kept up is proof enough.
    if (status.isTracking && status.trouble && !status.trouble->canSee()) status.trouble.reset();
    if (!status.isTracking && isTrackerThere) status.awaySince = PresenceNote::awaySince(store);
    Output output;
    output.write(context.json ? jsonOf(status) : textOf(status, local, now));
    output.finish();
}

}  // namespace

void addStatusCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("status", "Tell whether tracking runs, the open record and today's total");
    command->callback([&context] { context.command = [&context] { printStatus(context); }; });
}

}  // namespace quorvane::cli
