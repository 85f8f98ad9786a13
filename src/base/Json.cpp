#include "base/Json.h"

#include <fmt/format.h>
#include <set>

namespace quorvane {
namespace {

/// nlohmann's messages begin with "[json.exception.parse_error.101] "; people need what follows.
std::string withoutTag(std::string_view message) {
    const auto end = message.find("] ");
    return std::string(end == std::string_view::npos ? message : message.substr(end + 2));
}

/// A value with the same key twice is a mistake that must not pass silently: the callback sees each key once per
/// object.
class DuplicateKeys {
public:
    bool operator()(int, Json::parse_event_t event, Json& parsed) {
        if (event == Json::parse_event_t::object_start) open_.emplace_back();
        if (event == Json::parse_event_t::object_end && !open_.empty()) open_.pop_back();
        if (event == Json::parse_event_t::key && !open_.back().insert(parsed.get<std::string>()).second && !found)
            found = parsed.get<std::string>();
        return true;
    }
    std::optional<std::string> found;

private:
    std::vector<std::set<std::string>> open_;
};

}  // namespace

std::optional<Json> parseJson(std::string_view text, std::string* error) {
    try {
        DuplicateKeys duplicates;
        auto value = Json::parse(text, std::ref(duplicates));
        if (!duplicates.found) return value;
        if (error) *error = fmt::format("the key \"{}\" stands twice in one object", *duplicates.found);
    } catch (const Json::exception& failure) {
        if (error) *error = withoutTag(failure.what());
    }
    return std::nullopt;
}

std::string jsonText(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string prettyJsonText(const Json& value) {
    return value.dump(2, ' ', false, Json::error_handler_t::replace);
}

}  // namespace quorvane
