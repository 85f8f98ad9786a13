#pragma once

#include "base/Date.h"
#include "base/Uuid.h"
#include "platform/Clock.h"
#include "store/Entity.h"
#include "store/Project.h"

namespace quorvane {

/// A span of time that the user assigned to a project, whatever was recorded in it.
class ProjectTimeAnnotation final : public Entity {
public:
    [[nodiscard]] static const EntityDescription& description();
    [[nodiscard]] const EntityDescription& entityDescription() const override { return description(); }

    Attribute<Uuid> id{*this, Uuid::random()};
    Attribute<Date> startTime{*this, platform::currentDate()};
    Attribute<Date> endTime{*this, platform::currentDate()};
    Reference<Project> project{*this};
    Attribute<Date> createdAt{*this, platform::currentDate()};
    Attribute<Date> updatedAt{*this, platform::currentDate()};

    /// End minus start; negative if the two are swapped.
    [[nodiscard]] Seconds duration() const { return endTime() - startTime(); }
};

}  // namespace quorvane
