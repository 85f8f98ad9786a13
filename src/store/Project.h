#pragma once

#include "base/Date.h"
#include "base/Uuid.h"
#include "platform/Clock.h"
#include "store/Entity.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

class ActivityRecord;
class ProjectTimeAnnotation;

/// What time is billed to. Removing one leaves its records and annotations in place, with no project.
class Project final : public Entity {
public:
    [[nodiscard]] static const EntityDescription& description();
    [[nodiscard]] const EntityDescription& entityDescription() const override { return description(); }

    Attribute<Uuid> id{*this, Uuid::random()};
    Attribute<std::string> name{*this};
    Attribute<std::optional<std::string>> color{*this};  ///< name of a tone, such as "gray"
    Attribute<std::optional<std::string>> clientName{*this};
    Attribute<double> hourlyRate{*this, 0.0};  ///< money per hour in `currencyCode`
    Attribute<std::string> currencyCode{*this, "USD"};
    Attribute<Date> createdAt{*this, platform::currentDate()};
    Attribute<Date> updatedAt{*this, platform::currentDate()};
    Attribute<bool> isArchived{*this, false};  ///< out of the pickers, not out of the records
    Attribute<std::optional<std::string>> cloudKitRecordID{*this};

    /// The records and annotations that lead to this project, oldest first; empty outside a context.
    [[nodiscard]] std::vector<std::shared_ptr<ActivityRecord>> activities() const;
    [[nodiscard]] std::vector<std::shared_ptr<ProjectTimeAnnotation>> timeAnnotations() const;
};

}  // namespace quorvane
