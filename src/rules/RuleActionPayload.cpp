#include "rules/RuleActionPayload.h"

#include "base/Json.h"

#include <algorithm>

namespace quorvane {
namespace {

/// Reads the value under the key into the field, where it is there and not null; false if it is of another kind.
template <class T>
bool read(const Json& object, const char* key, std::optional<T>& field) {
    const auto found = object.find(key);
    if (found == object.end() || found->is_null()) return true;
    if (const auto* value = found->get_ptr<const T*>()) field = *value;
    return field.has_value();
}

bool readTags(const Json& object, std::optional<std::vector<std::string>>& tags) {
    const auto found = object.find("tags");
    if (found == object.end() || found->is_null()) return true;
    if (!found->is_array() ||
        !std::all_of(found->begin(), found->end(), [](const Json& tag) { return tag.is_string(); }))
        return false;
    tags = found->get<std::vector<std::string>>();
    return true;
}

}  // namespace

std::string RuleActionPayload::json() const {
    Json object = Json::object();
    if (category) object["category"] = *category;
    if (projectId) object["projectId"] = *projectId;
    if (stopProcessing) object["stopProcessing"] = *stopProcessing;
    if (tags) object["tags"] = *tags;
    return jsonText(object);
}

std::optional<RuleActionPayload> readRuleAction(std::string_view json) {
    const Json value = Json::parse(json, nullptr, false);
    RuleActionPayload payload;
    if (!value.is_object() || !read(value, "category", payload.category) ||
        !read(value, "projectId", payload.projectId) || !readTags(value, payload.tags) ||
        !read(value, "stopProcessing", payload.stopProcessing))
        return std::nullopt;
    return payload;
}

}  // namespace quorvane
