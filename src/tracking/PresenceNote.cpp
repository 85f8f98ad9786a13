#include "tracking/PresenceNote.h"

#include <charconv>

namespace quorvane::PresenceNote {
namespace {

constexpr const char* pauseKey = "presence.paused_since";
constexpr const char* absenceKey = "presence.away_since";

/// Microseconds since 1970; empty for none.
void keepInstant(ModelContext& store, const char* key, std::optional<Date> instant) {
    const std::string text = instant ? std::to_string(microsecondsSince1970(*instant)) : std::string();
    if (store.note(key).value_or("") != text) store.setNote(key, text);
}

std::optional<Date> keptInstant(ModelContext& store, const char* key) {
    const std::string text = store.note(key).value_or("");
    std::int64_t microseconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), microseconds);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole ? std::optional(dateFromMicroseconds(microseconds)) : std::nullopt;
}

}  // namespace

void keepPause(ModelContext& store, std::optional<Date> since) {
    keepInstant(store, pauseKey, since);
}

std::optional<Date> pausedSince(ModelContext& store) {
    return keptInstant(store, pauseKey);
}

void keepAbsence(ModelContext& store, std::optional<Date> since) {
    keepInstant(store, absenceKey, since);
}

std::optional<Date> awaySince(ModelContext& store) {
    return keptInstant(store, absenceKey);
}

}  // namespace quorvane::PresenceNote
