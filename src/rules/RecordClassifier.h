#pragma once

#include <memory>
#include <vector>

namespace quorvane {

class ActivityRecord;
class Project;
class Rule;

/// Classifies a new record by the user's rules: category, tags, project, source and confidence. Main thread only.
class RecordClassifier {
public:
    virtual ~RecordClassifier() = default;
    virtual void apply(ActivityRecord& record, const std::vector<std::shared_ptr<Rule>>& rules,
                       const std::vector<std::shared_ptr<Project>>& projects) = 0;
};

}  // namespace quorvane
