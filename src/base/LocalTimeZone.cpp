#include "base/LocalTimeZone.h"

#include "base/PosixTimeZone.h"
#include "base/TimeZoneFile.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <optional>
#include <sys/stat.h>
#include <tuple>
#include <unicode/basictz.h>
#include <unicode/timezone.h>
#include <unicode/tztrans.h>

namespace quorvane {
namespace {

constexpr const char* systemFile = "/etc/localtime";
constexpr const char* systemFolder = "/usr/share/zoneinfo";
constexpr std::string_view folderName = "/zoneinfo/";
constexpr std::uintmax_t largestFile = 1 << 18;  // zones have 4 KiB at most
constexpr int firstPosixYear = 1900;
constexpr int posixYears = 402;
constexpr std::int64_t farFuture = 17'000'000'000;  // of the year 2508: four centuries of rules that still hold

std::string zoneFile(const std::string& name) {
    if (name.starts_with('/')) return name;
    const char* folder = std::getenv("TZDIR");
    return std::string(folder != nullptr && *folder != '\0' ? folder : systemFolder) + '/' + name;
}

std::optional<TimeZone> readFile(const std::string& file) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return std::nullopt;
    const auto size = std::filesystem::file_size(file, error);
    if (error || size > largestFile) return std::nullopt;
    std::string bytes(size, '\0');
    std::ifstream stream(file, std::ios::binary);
    if (!stream.read(bytes.data(), static_cast<std::streamsize>(size))) return std::nullopt;
    return readTimeZoneFile(bytes);
}

std::optional<TimeZone> readRules(const std::string& rules) {
    const auto posix = PosixTimeZone::parse(rules);
    if (!posix) return std::nullopt;
    return TimeZone(posix->offset, posix->changes(firstPosixYear, posixYears), true);
}

std::optional<TimeZone> fromIcu(const icu::TimeZone& zone) {
    const auto* rules = dynamic_cast<const icu::BasicTimeZone*>(&zone);
    if (rules == nullptr || zone == icu::TimeZone::getUnknown()) return std::nullopt;
    constexpr double longAgo = -1e14;  // milliseconds
    UErrorCode error = U_ZERO_ERROR;
    std::int32_t raw = 0;
    std::int32_t summer = 0;
    rules->getOffset(longAgo, false, raw, summer, error);
    std::vector<TimeZone::Change> changes;
    icu::TimeZoneTransition next;
    for (double at = longAgo; at < farFuture * 1e3 && rules->getNextTransition(at, false, next) != 0;
         at = next.getTime())
        changes.push_back({static_cast<std::int64_t>(next.getTime() / 1000),
                           (next.getTo()->getRawOffset() + next.getTo()->getDSTSavings()) / 1000});
    const bool repeats = !changes.empty() && changes.back().at >= farFuture;
    return TimeZone((raw + summer) / 1000, changes, repeats);
}

std::optional<TimeZone> fromIcu(const std::string& name) {
    const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(name)));
    return fromIcu(*zone);
}

/// The name that a link to a file of the folder of zones gives away.
std::string linkedName(const char* file) {
    std::error_code error;
    const std::string target = std::filesystem::read_symlink(file, error).string();
    const auto at = target.rfind(folderName);
    return at == std::string::npos ? std::string() : target.substr(at + folderName.size());
}

TimeZone systemTimeZone() {
    if (auto zone = readFile(systemFile)) return *std::move(zone);
    if (auto zone = fromIcu(linkedName(systemFile))) return *std::move(zone);
    const std::unique_ptr<icu::TimeZone> host(icu::TimeZone::detectHostTimeZone());
    return fromIcu(*host).value_or(TimeZone());
}

/// What tells one state of a file from the next.
using FileState = std::tuple<dev_t, ino_t, std::int64_t, std::int64_t>;

FileState stateOf(const std::string& file) {
    struct stat found {};
    if (::stat(file.c_str(), &found) != 0) return {};
    return {found.st_dev, found.st_ino, found.st_ctim.tv_sec, found.st_ctim.tv_nsec};
}

/// What decides which zone is the user's.
struct Source {
    std::optional<std::string> value;  ///< of TZ
    std::string file;
    FileState state;
    friend bool operator==(const Source&, const Source&) = default;
};

std::string withoutColon(std::string value) {
    if (value.starts_with(':')) value.erase(0, 1);
    return value;
}

Source sourceOfLocalTime() {
    const char* value = std::getenv("TZ");
    Source source;
    if (value != nullptr) source.value = value;
    source.file = value != nullptr ? zoneFile(withoutColon(value)) : systemFile;
    source.state = stateOf(source.file);
    return source;
}

}  // namespace

TimeZone timeZone(const std::string& value) {
    const std::string name = withoutColon(value);
    if (auto zone = readFile(zoneFile(name))) return *std::move(zone);
    if (auto zone = readRules(name)) return *std::move(zone);
    return fromIcu(name).value_or(TimeZone());
}

std::shared_ptr<const TimeZone> localTimeZone() {
    static std::mutex mutex;
    static Source known;
    static std::shared_ptr<const TimeZone> zone;
    const std::lock_guard lock(mutex);
    if (auto source = sourceOfLocalTime(); !zone || source != known) {
        zone = std::make_shared<const TimeZone>(source.value ? timeZone(*source.value) : systemTimeZone());
        known = std::move(source);
    }
    return zone;
}

}  // namespace quorvane
