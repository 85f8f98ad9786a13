#include "session/RecordAnnouncer.h"

#include "base/TerminalText.h"

#include <algorithm>
#include <fmt/format.h>

namespace quorvane {
namespace {

std::string nameOf(const ActivityRecord& record) {
    return harmlessLine(record.appName().value_or("Unknown"));
}

}  // namespace

RecordAnnouncer::RecordAnnouncer(ModelContext& context, std::function<void(const std::string&)> announce, Titles titles)
    : announce_(std::move(announce)), titles_(titles),
      subscription_(context.didChange.subscribe([this](const EntityChange& change) { follow(change); })) {}

void RecordAnnouncer::follow(const EntityChange& change) {
    const auto record = std::dynamic_pointer_cast<ActivityRecord>(change.entity);
    if (!record) return;
    if (change.kind == EntityChange::Kind::inserted && !record->endTime()) return noteOpened(record);
    const auto known = std::find_if(open_.begin(), open_.end(), [&](const auto& one) { return one.lock() == record; });
    if (known == open_.end()) return;
    const auto end = record->endTime();
    if (!end && change.kind != EntityChange::Kind::removed) return;
    open_.erase(known);
    if (end)
        announce_(fmt::format("{}  closed  {}  {}", local_.time(*end), nameOf(*record),
                              durationText(*end - record->startTime())));
}

void RecordAnnouncer::noteOpened(const std::shared_ptr<ActivityRecord>& record) {
    std::erase_if(open_, [](const auto& one) { return one.expired(); });
    open_.push_back(record);
    const std::string title =
        titles_ == Titles::shown ? harmlessLine(record->windowTitle().value_or("")) : std::string();
    announce_(fmt::format("{}  opened  {}{}{}", local_.time(record->startTime()), nameOf(*record),
                          title.empty() ? "" : " — ", title));
}

}  // namespace quorvane
