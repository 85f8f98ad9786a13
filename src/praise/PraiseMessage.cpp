#include "praise/PraiseMessage.h"

#include "praise/PraiseMessageTable.h"

#include <initializer_list>

namespace quorvane {
namespace {

/// The template of the first of these languages that is there.
std::optional<PraiseTemplate> firstOf(const PraiseTemplates& templates,
                                      std::initializer_list<SupportedLanguage> languages) {
    for (const SupportedLanguage language : languages)
        if (const auto found = templates.find(language); found != templates.end())
            return PraiseTemplate{language, found->second};
    return std::nullopt;
}

}  // namespace

PraiseTemplate messageTemplate(const MultilingualPraiseMessage& row, const PraiseLanguage& language) {
    const SupportedLanguage wanted = language.selected.value_or(language.effective);
    if (auto found = firstOf(row.messages, {wanted, language.effective, SupportedLanguage::chinese})) return *found;
    return {wanted, PraiseMessageDatabase::words(wanted).plain};
}

std::optional<PraiseTemplate> reasonTemplate(const MultilingualPraiseMessage& row, const PraiseLanguage& language) {
    if (!row.reasonTemplates) return std::nullopt;
    return firstOf(*row.reasonTemplates, {language.selected.value_or(language.effective), language.effective,
                                          SupportedLanguage::chinese, SupportedLanguage::english});
}

PraiseMessage inLanguage(const MultilingualPraiseMessage& row, const PraiseLanguage& language) {
    const auto reason = reasonTemplate(row, language);
    return {.id = row.id,
            .category = row.category,
            .message = messageTemplate(row, language).text,
            .condition = row.condition,
            .minHours = row.minHours,
            .maxHours = row.maxHours,
            .appTypes = row.appTypes,
            .reasonTemplate = reason ? std::optional(reason->text) : std::nullopt};
}

}  // namespace quorvane
