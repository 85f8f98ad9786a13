#pragma once

#include "base/Date.h"
#include "base/Uuid.h"
#include "platform/Clock.h"
#include "store/Entity.h"

#include <string>

namespace quorvane {

/// When these conditions hold for a new record, do this to it. Conditions and action are JSON texts, so that the table
/// stays as it is while they grow.
class Rule final : public Entity {
public:
    [[nodiscard]] static const EntityDescription& description();
    [[nodiscard]] const EntityDescription& entityDescription() const override { return description(); }

    Attribute<Uuid> id{*this, Uuid::random()};
    Attribute<std::string> name{*this};            ///< shown, and written into the source of a record that matched
    Attribute<std::int64_t> priority{*this, 100};  ///< smaller runs first
    Attribute<bool> isEnabled{*this, true};
    Attribute<std::string> type{*this, "and"};  ///< "or" in any case: one condition suffices; else all must hold
    Attribute<std::string> condition{*this, "{}"};
    Attribute<std::string> action{*this, "{}"};
    Attribute<Date> createdAt{*this, platform::currentDate()};
    Attribute<Date> updatedAt{*this, platform::currentDate()};  ///< among equal priorities the newer runs first
};

}  // namespace quorvane
