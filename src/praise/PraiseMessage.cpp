#include "praise/PraiseMessage.h"

#include <initializer_list>

namespace quorvane {
namespace {

/// The template of the first of these languages that is there.
std::optional<std::string> firstOf(const PraiseTemplates& templates,
                                   std::initializer_list<SupportedLanguage> languages) {
    for (const SupportedLanguage language : languages)
        if (const auto found = templates.find(language); found != templates.end()) return found->second;
    return std::nullopt;
}

}  // namespace

std::string messageTemplate(const MultilingualPraiseMessage& row, const PraiseLanguage& language) {
    return firstOf(row.messages, {language.selected.value_or(language.effective), SupportedLanguage::chinese})
        .value_or("你今天努力了{hours}小时，继续保持！");
}

std::optional<std::string> reasonTemplate(const MultilingualPraiseMessage& row, const PraiseLanguage& language) {
    if (!row.reasonTemplates) return std::nullopt;
    return firstOf(*row.reasonTemplates, {language.selected.value_or(language.effective), language.effective,
                                          SupportedLanguage::chinese, SupportedLanguage::english});
}

PraiseMessage inLanguage(const MultilingualPraiseMessage& row, const PraiseLanguage& language) {
    return {.id = row.id,
            .category = row.category,
            .message = messageTemplate(row, language),
            .condition = row.condition,
            .minHours = row.minHours,
            .maxHours = row.maxHours,
            .appTypes = row.appTypes,
            .reasonTemplate = reasonTemplate(row, language)};
}

}  // namespace quorvane
