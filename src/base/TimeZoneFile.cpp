#include "base/TimeZoneFile.h"

#include "base/PosixTimeZone.h"

#include <algorithm>
#include <utility>

namespace quorvane {
namespace {

constexpr int firstYear = 1900;
constexpr int cycleYears = 400;

/// Takes numbers, the most significant byte first, from the front of a text; 0 once it has run out.
class Reader {
public:
    explicit Reader(std::string_view bytes) : rest_(bytes) {}

    [[nodiscard]] bool hasFailed() const { return hasFailed_; }
    [[nodiscard]] std::string_view rest() const { return rest_; }

    std::string_view take(std::size_t count) {
        hasFailed_ |= count > rest_.size();
        const auto taken = rest_.substr(0, count);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    /// Of 1, 4 or 8 bytes, with a sign if there are more than one.
    std::int64_t number(std::size_t size) {
        std::uint64_t value = 0;
        for (const char byte : take(size))
            value = value << 8 | static_cast<unsigned char>(byte);
        return size == 4 ? static_cast<std::int32_t>(value) : static_cast<std::int64_t>(value);
    }

    std::size_t count() { return static_cast<std::uint32_t>(number(4)); }

private:
    std::string_view rest_;
    bool hasFailed_ = false;
};

struct Header {
    char version = 0;
    std::size_t utcFlags = 0;
    std::size_t standardFlags = 0;
    std::size_t leaps = 0;
    std::size_t changes = 0;
    std::size_t types = 0;
    std::size_t nameBytes = 0;

    [[nodiscard]] std::size_t size(std::size_t timeSize) const {
        return changes * (timeSize + 1) + types * 6 + nameBytes + leaps * (timeSize + 4) + standardFlags + utcFlags;
    }
};

std::optional<Header> readHeader(Reader& reader) {
    if (reader.take(4) != "TZif") return std::nullopt;
    const auto version = reader.take(1);
    reader.take(15);
    Header header{.version = version.empty() ? '\0' : version.front()};
    for (std::size_t* count :
         {&header.utcFlags, &header.standardFlags, &header.leaps, &header.changes, &header.types, &header.nameBytes})
        *count = reader.count();
    const bool isWhole = !reader.hasFailed() && header.types > 0 && header.size(4) <= reader.rest().size();
    return isWhole ? std::optional(header) : std::nullopt;
}

struct Zone {
    std::int32_t offset = 0;
    std::vector<TimeZone::Change> changes;
};

/// The changes, told in seconds that count leap seconds, told in seconds that don't.
void leaveOutLeapSeconds(std::vector<TimeZone::Change>& changes, Reader reader, std::size_t leaps,
                         std::size_t timeSize) {
    std::vector<std::pair<std::int64_t, std::int64_t>> corrections(leaps);  // since when, how much
    for (auto& [since, correction] : corrections) {
        since = reader.number(timeSize);
        correction = reader.number(4);
    }
    for (TimeZone::Change& change : changes) {
        const auto next =
            std::ranges::upper_bound(corrections, change.at, {}, &std::pair<std::int64_t, std::int64_t>::first);
        if (next != corrections.begin()) change.at -= std::prev(next)->second;
    }
}

std::optional<Zone> readZone(Reader& reader, const Header& header, std::size_t timeSize) {
    Reader times(reader.take(header.changes * timeSize));
    Reader indexes(reader.take(header.changes));
    Reader types(reader.take(header.types * 6));
    std::vector<std::int32_t> offsets;
    for (std::size_t i = 0; i < header.types && !types.hasFailed(); ++i) {
        offsets.push_back(static_cast<std::int32_t>(types.number(4)));
        types.take(2);
    }
    if (reader.hasFailed() || std::ranges::any_of(offsets, [](std::int32_t offset) {
            return offset < -TimeZone::mostOffset || offset > TimeZone::mostOffset;
        }))
        return std::nullopt;
    Zone zone;
    zone.offset = offsets.front();
    for (std::size_t i = 0; i < header.changes; ++i) {
        const auto at = times.number(timeSize);
        const auto type = static_cast<std::size_t>(indexes.number(1));
        if (type >= offsets.size() || (!zone.changes.empty() && at <= zone.changes.back().at)) return std::nullopt;
        zone.changes.push_back({at, offsets[type]});
    }
    reader.take(header.nameBytes);
    leaveOutLeapSeconds(zone.changes, Reader(reader.take(header.leaps * (timeSize + 4))), header.leaps, timeSize);
    reader.take(header.standardFlags + header.utcFlags);
    return reader.hasFailed() ? std::nullopt : std::optional(std::move(zone));
}

int yearOf(std::int64_t second) {
    constexpr std::int64_t averageYear = 31'556'952;
    return static_cast<int>(std::clamp<std::int64_t>(1970 + second / averageYear, firstYear, 9999));
}

/// What the last line of the file says of the time behind its last change. True if that goes on for ever.
bool follow(std::string_view rules, std::vector<TimeZone::Change>& changes) {
    const auto posix = PosixTimeZone::parse(rules);
    if (!posix || !posix->summer) return false;
    const auto known = changes.empty() ? std::nullopt : std::optional(changes.back().at);
    const int first = known ? yearOf(*known) - 1 : firstYear;
    // Some years more, as the first ones may be known already.
    for (const TimeZone::Change& change : posix->changes(first, cycleYears + 4))
        if (change.at > known) changes.push_back(change);
    return true;
}

}  // namespace

std::optional<TimeZone> readTimeZoneFile(std::string_view bytes) {
    Reader reader(bytes);
    auto header = readHeader(reader);
    std::size_t timeSize = 4;
    if (header && header->version >= '2') {  // the same again, with times of eight bytes and a last line
        reader.take(header->size(timeSize));
        header = readHeader(reader);
        timeSize = 8;
    }
    auto zone = header ? readZone(reader, *header, timeSize) : std::nullopt;
    if (!zone) return std::nullopt;
    auto lastLine = reader.rest();
    if (lastLine.starts_with('\n') && lastLine.ends_with('\n')) lastLine = lastLine.substr(1, lastLine.size() - 2);
    const bool repeats = follow(lastLine, zone->changes);
    return TimeZone(zone->offset, zone->changes, repeats);
}

}  // namespace quorvane
