#include "praise/PraiseMessageTable.h"

#include "base/Json.h"

namespace quorvane::PraiseMessageDatabase {

extern const char* const praiseMessagesJson;  // generated from resources/praise/messages.json

namespace {

template <class Value>
std::optional<Value> optionalValue(const Json& object, const char* key) {
    const auto found = object.find(key);
    return found == object.end() ? std::nullopt : std::optional(found->get<Value>());
}

PraiseTemplates readTemplates(const Json& object) {
    PraiseTemplates templates;
    for (const auto& [language, text] : object.items())
        templates.emplace(fromRawValue<SupportedLanguage>(language).value(), text.get<std::string>());
    return templates;
}

MultilingualPraiseMessage readRow(const Json& object) {
    const auto reasons = object.find("reasonTemplates");
    return {.id = object.at("id"),
            .category = fromRawValue<PraiseCategory>(object.at("category").get<std::string>()).value(),
            .messages = readTemplates(object.at("messages")),
            .condition = optionalValue<std::string>(object, "condition"),
            .minHours = optionalValue<double>(object, "minHours"),
            .maxHours = optionalValue<double>(object, "maxHours"),
            .appTypes = optionalValue<std::vector<std::string>>(object, "appTypes"),
            .reasonTemplates = reasons == object.end() ? std::nullopt : std::optional(readTemplates(*reasons))};
}

PraiseWords readWords(const Json& object) {
    const Json& minutes = object.at("minutes");
    return {.hours = object.at("hours"),
            .minutes = {minutes.at(0).get<std::string>(), minutes.at(1).get<std::string>()},
            .someApps = object.at("someApps"),
            .unknownApp = object.at("unknownApp"),
            .plain = object.at("plain")};
}

struct Messages {
    std::vector<MultilingualPraiseMessage> table;
    MultilingualPraiseMessage fallback;
    std::map<SupportedLanguage, PraiseWords> words;
};

/// The text is ours: whatever is wrong with it, the first test of the table ends with an exception.
const Messages& messages() {
    static const Messages parsed = [] {
        const Json json = parseJson(praiseMessagesJson).value();
        const Json& rows = json.at("table");
        Messages made{.table = {}, .fallback = readRow(json.at("fallback")), .words = {}};
        made.table.reserve(rows.size());
        for (const Json& row : rows)
            made.table.push_back(readRow(row));
        for (const auto& [language, code] : RawValues<SupportedLanguage>::table)
            made.words.emplace(language, readWords(json.at("words").at(std::string(code))));
        return made;
    }();
    return parsed;
}

}  // namespace

const std::vector<MultilingualPraiseMessage>& table() {
    return messages().table;
}

const MultilingualPraiseMessage& fallbackRow() {
    return messages().fallback;
}

const PraiseWords& words(SupportedLanguage language) {
    return messages().words.at(language);
}

}  // namespace quorvane::PraiseMessageDatabase
