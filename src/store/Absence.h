#pragma once

#include "base/Date.h"
#include "store/Entity.h"

namespace quorvane {

/// A stretch of time in which a tracker watched and nobody was there. A tracker's absences don't overlap. Dumps leave
/// them out.
class Absence final : public Entity {
public:
    [[nodiscard]] static const EntityDescription& description();
    [[nodiscard]] const EntityDescription& entityDescription() const override { return description(); }

    Attribute<Date> startTime{*this};
    Attribute<Date> endTime{*this};
    Attribute<bool> isLeftEmpty{*this, false};  ///< the user has said that it was nobody's time
};

}  // namespace quorvane
