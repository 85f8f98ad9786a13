#include "rules/RuleMatch.h"

#include "base/Text.h"
#include "base/Url.h"

#include <algorithm>

namespace quorvane {

bool RuleMatch::matches(const std::string& type, const std::vector<RuleCondition>& conditions) {
    if (conditions.empty()) return false;
    const auto test = [this](const RuleCondition& condition) { return holds(condition); };
    return text::lowercased(type) == "or" ? std::any_of(conditions.begin(), conditions.end(), test)
                                          : std::all_of(conditions.begin(), conditions.end(), test);
}

bool RuleMatch::holds(const RuleCondition& condition) {
    const auto matchOperator = fromRawValue<RuleOperator>(condition.matchOperator);
    const std::string pattern = text::trimmedWithNewlines(condition.value);
    if (pattern.empty() || !matchOperator) return false;
    Subject& subject = this->subject(condition.field);
    switch (*matchOperator) {
    case RuleOperator::contains: {
        if (!subject.folded) subject.folded = text::folded(subject.text);
        const std::string part = text::folded(pattern);  // empty for a pattern of nothing but diacritics
        return !part.empty() && subject.folded->find(part) != std::string::npos;
    }
    case RuleOperator::equals: return text::equalsIgnoringCase(subject.text, pattern);
    case RuleOperator::prefix:
        if (!subject.lowercased) subject.lowercased = text::lowercased(subject.text);
        return subject.lowercased->starts_with(text::lowercased(pattern));
    case RuleOperator::regex: return search_.finds(pattern, subject.text);
    }
    return false;
}

RuleMatch::Subject& RuleMatch::subject(std::string_view field) {
    const auto known = fromRawValue<RuleField>(field);
    if (!known) return nothing_;
    auto& kept = subjects_[static_cast<std::size_t>(*known)];
    if (!kept) kept = Subject{.text = subjectText(*known)};
    return *kept;
}

std::string RuleMatch::subjectText(RuleField field) const {
    switch (field) {
    case RuleField::appBundleId: return record_.appBundleId().value_or("");
    case RuleField::appName: return record_.appName().value_or("");
    case RuleField::windowTitle: return record_.windowTitle().value_or("");
    case RuleField::urlHost: return urlHost(record_.url().value_or("")).value_or("");
    case RuleField::url: return record_.url().value_or("");
    case RuleField::documentPath: return record_.documentPath().value_or("");
    }
    return {};
}

}  // namespace quorvane
