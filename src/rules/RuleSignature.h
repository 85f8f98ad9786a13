#pragma once

#include "store/Rule.h"

#include <string>
#include <string_view>

namespace quorvane {

/// What a rule tests and does, as one text: equal for rules that differ only in ids, names, order of conditions or
/// tags, priority and dates. What can't be read stands for itself.
[[nodiscard]] std::string ruleSignature(const Rule& rule);
[[nodiscard]] std::string ruleSignature(std::string_view condition, std::string_view action);

}  // namespace quorvane
