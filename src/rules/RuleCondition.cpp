#include "rules/RuleCondition.h"

#include "base/Json.h"

#include <algorithm>

namespace quorvane {
namespace {

/// Reads the very text that `RuleConditionSet::json` writes, as long as no character in it is escaped or beyond ASCII.
/// Rules are read anew for each new record, and nearly all of them look like this; the JSON parser takes the rest.
class WrittenForm {
public:
    explicit WrittenForm(std::string_view text) : rest_(text) {}

    std::optional<std::vector<RuleCondition>> read() {
        std::vector<RuleCondition> conditions;
        if (!skip(R"({"conditions":[)")) return std::nullopt;
        do {
            RuleCondition condition;
            std::string_view id;
            if (!skip(R"({"field":)") || !take(condition.field) || !skip(R"(,"id":)") || !take(id) ||
                !skip(R"(,"operator":)") || !take(condition.matchOperator) || !skip(R"(,"value":)") ||
                !take(condition.value) || !skip("}"))
                return std::nullopt;
            const auto uuid = Uuid::parse(id);
            if (!uuid) return std::nullopt;
            condition.id = *uuid;
            conditions.push_back(std::move(condition));
        } while (skip(","));
        if (!skip("]}") || !rest_.empty()) return std::nullopt;
        return conditions;
    }

private:
    bool skip(std::string_view expected) {
        if (!rest_.starts_with(expected)) return false;
        rest_.remove_prefix(expected.size());
        return true;
    }

    template <class Text>
    bool take(Text& text) {
        if (!skip("\"")) return false;
        const auto isOrdinary = [](char c) { return c >= 0x20 && c < 0x7f && c != '"' && c != '\\'; };
        const auto end = std::find_if_not(rest_.begin(), rest_.end(), isOrdinary);
        const auto size = static_cast<std::size_t>(end - rest_.begin());
        text = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return skip("\"");
    }

    std::string_view rest_;
};

const std::string* textAt(const Json& object, const char* key) {
    const auto found = object.find(key);
    return found == object.end() ? nullptr : found->get_ptr<const std::string*>();
}

std::optional<RuleCondition> readCondition(const Json& value) {
    if (!value.is_object()) return std::nullopt;
    const auto* id = textAt(value, "id");
    const auto* field = textAt(value, "field");
    const auto* matchOperator = textAt(value, "operator");
    const auto* text = textAt(value, "value");
    if (!id || !field || !matchOperator || !text) return std::nullopt;
    const auto uuid = Uuid::parse(*id);
    if (!uuid) return std::nullopt;
    return RuleCondition{*uuid, *field, *matchOperator, *text};
}

std::optional<std::vector<RuleCondition>> readSet(const Json& value) {
    const auto found = value.find("conditions");
    if (found == value.end() || !found->is_array()) return std::nullopt;
    std::vector<RuleCondition> conditions;
    for (const Json& item : *found) {
        auto condition = readCondition(item);
        if (!condition) return std::nullopt;
        conditions.push_back(std::move(*condition));
    }
    return conditions;
}

}  // namespace

std::string RuleConditionSet::json() const {
    Json list = Json::array();
    for (const RuleCondition& condition : conditions)
        list.push_back({{"field", condition.field},
                        {"id", condition.id.string()},
                        {"operator", condition.matchOperator},
                        {"value", condition.value}});
    return jsonText({{"conditions", std::move(list)}});
}

std::optional<std::vector<RuleCondition>> readRuleConditions(std::string_view json) {
    if (auto written = WrittenForm(json).read()) return written;
    const Json value = Json::parse(json, nullptr, false);
    if (!value.is_object()) return std::nullopt;
    if (auto set = readSet(value)) return set;
    if (auto alone = readCondition(value)) return std::vector{std::move(*alone)};
    return std::nullopt;
}

}  // namespace quorvane
