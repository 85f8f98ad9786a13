#include "praise/PraiseMessageDatabase.h"

#include "base/PreferredLanguages.h"
#include "base/Text.h"
#include "praise/PraiseMessageTable.h"
#include "store/AppSettings.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <unordered_map>
#include <vector>

namespace quorvane::PraiseMessageDatabase {
namespace {

using Rows = std::vector<const MultilingualPraiseMessage*>;

/// The name of the application with the most records, the first to come among equals; empty without records.
std::string mostFrequentApp(std::span<const TimelineRecordSnapshot> records) {
    std::unordered_map<std::string, std::size_t> counts;
    for (const TimelineRecordSnapshot& record : records)
        ++counts[record.displayName()];
    std::string name;
    std::size_t most = 0;
    for (const TimelineRecordSnapshot& record : records)
        if (const std::size_t count = counts[record.displayName()]; count > most) {
            most = count;
            name = record.displayName();
        }
    return name;
}

bool containsAny(std::string_view text, std::initializer_list<std::string_view> parts) {
    return std::ranges::any_of(parts, [&](std::string_view part) { return text.find(part) != std::string_view::npos; });
}

Rows rowsOf(PraiseCategory category, SupportedLanguage language) {
    Rows rows;
    for (const MultilingualPraiseMessage& row : table())
        if (row.category == category && row.messages.contains(language)) rows.push_back(&row);
    return rows;
}

SupportedLanguage effectiveLanguage(const PraiseRequest& request) {
    if (request.selectedLanguage) return *request.selectedLanguage;
    if (request.settings != nullptr)
        if (const auto language = fromRawValue<SupportedLanguage>(request.settings->preferredLanguage()))
            return *language;
    return detectSystemLanguage();
}

}  // namespace

SupportedLanguage languageOfCode(std::optional<std::string_view> code) {
    const std::string_view tag = code.value_or("");
    return fromRawValue<SupportedLanguage>(text::lowercased(tag.substr(0, tag.find('-'))))
        .value_or(SupportedLanguage::chinese);
}

SupportedLanguage detectSystemLanguage() {
    const auto languages = preferredLanguages();
    return languages.empty() ? languageOfCode(std::nullopt) : languageOfCode(languages.front());
}

PraiseCategory automaticCategory(const PraisedDay& day) {
    if (day.hours >= 8) return PraiseCategory::achievement;
    if (day.hours >= 5) return PraiseCategory::dedication;
    const std::string app = mostFrequentApp(day.records);
    if (containsAny(app, {"Figma", "Sketch", "Photoshop", "Illustrator"})) return PraiseCategory::creativity;
    if (containsAny(app, {"Safari", "Chrome", "Notion", "Jupyter", "PyCharm"})) return PraiseCategory::wisdom;
    if (containsAny(app, {"Slack", "Teams", "Discord"})) return PraiseCategory::social;
    return PraiseCategory::productivity;
}

bool fits(const MultilingualPraiseMessage& row, const PraisedDay& day) {
    if (row.minHours && day.hours < *row.minHours) return false;
    if (row.maxHours && day.hours > *row.maxHours) return false;
    if (!row.appTypes || row.appTypes->empty()) return true;
    return std::ranges::any_of(day.records,
                               [&](const TimelineRecordSnapshot& record) { return matchesAny(record, *row.appTypes); });
}

const MultilingualPraiseMessage& selectMessage(const PraisedDay& day, SupportedLanguage language,
                                               std::optional<PraiseCategory> category,
                                               const std::optional<std::string>& lastId, const RandomWords& random) {
    const Rows rows = rowsOf(category ? *category : automaticCategory(day), language);
    Rows pool;
    std::ranges::copy_if(rows, std::back_inserter(pool), [&](const auto* row) { return row->id != lastId; });
    Rows fitting;
    std::ranges::copy_if(pool, std::back_inserter(fitting), [&](const auto* row) { return fits(*row, day); });
    if (!fitting.empty()) pool = std::move(fitting);
    if (!pool.empty()) return *pool[randomIndex(pool.size(), random)];
    return rows.empty() ? fallbackRow() : *rows.front();
}

Praise generatePraise(const PraiseRequest& request, const RandomWords& random) {
    const PraiseLanguage language{.effective = effectiveLanguage(request), .selected = request.selectedLanguage};
    const auto& row = selectMessage(request.day, language.effective, request.category, request.lastId, random);
    return {.message = formatMessage(row, language, request.day.hours),
            .reason = formatReason(row, request.day, language),
            .language = language.effective,
            .id = row.id,
            .row = &row};
}

}  // namespace quorvane::PraiseMessageDatabase
