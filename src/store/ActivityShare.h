#pragma once

#include "base/Date.h"
#include "base/Uuid.h"
#include "platform/Clock.h"
#include "store/Entity.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// This side of a share that was published.
class ActivityShare final : public Entity {
public:
    [[nodiscard]] static const EntityDescription& description();
    [[nodiscard]] const EntityDescription& entityDescription() const override { return description(); }

    Attribute<Uuid> id{*this, Uuid::random()};
    Attribute<std::string> shareToken{*this};
    Attribute<std::string> title{*this};
    Attribute<bool> isActive{*this, true};
    Attribute<Date> createdAt{*this, platform::currentDate()};
    Attribute<std::optional<Date>> expiresAt{*this};
    Attribute<std::vector<Uuid>> projectIds{*this};  ///< empty: all projects
    Attribute<std::optional<std::string>> cloudKitRecordID{*this};

    [[nodiscard]] bool isProjectSpecific() const { return !projectIds().empty(); }
    [[nodiscard]] std::size_t projectCount() const { return projectIds().size(); }
};

}  // namespace quorvane
