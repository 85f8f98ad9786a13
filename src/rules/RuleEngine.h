#pragma once

#include "store/ActivityRecord.h"
#include "store/Project.h"
#include "store/Rule.h"

#include <memory>
#include <vector>

/// Classifies a new record by the user's rules.
namespace quorvane::RuleEngine {

/// Runs the enabled rules over the record: by `priority`, among equals the one edited last first, until one that
/// matched stops the run. Category and project of a later rule replace those of an earlier one, tags add up, and each
/// rule that matched adds "rule:" and its name to the record's `source`. The record is changed in memory only, and its
/// `updatedAt` stays. What can't be read in a rule has no effect, silently. Main thread only.
void apply(ActivityRecord& record, const std::vector<std::shared_ptr<Rule>>& rules,
           const std::vector<std::shared_ptr<Project>>& projects);

}  // namespace quorvane::RuleEngine
