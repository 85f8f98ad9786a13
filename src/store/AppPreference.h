#pragma once

#include "base/Date.h"
#include "base/Uuid.h"
#include "platform/Clock.h"
#include "store/Entity.h"

#include <optional>
#include <string>

namespace quorvane {

/// An older row of settings. The application makes none; of one that is there, the idle threshold counts as long as no
/// `AppSettings` row exists; one of whole minutes goes into the first of these (`InitialSettings`).
class AppPreference final : public Entity {
public:
    [[nodiscard]] static const EntityDescription& description();
    [[nodiscard]] const EntityDescription& entityDescription() const override { return description(); }

    Attribute<Uuid> id{*this, Uuid::random()};
    Attribute<std::int64_t> idleThresholdSeconds{*this, 300};
    Attribute<std::int64_t> minActivitySeconds{*this, 5};
    Attribute<bool> collectWindowTitle{*this, true};
    Attribute<bool> collectDocumentPath{*this, true};
    Attribute<bool> collectURL{*this, true};
    Attribute<bool> askAfterLongIdle{*this, true};
    Attribute<std::optional<std::string>> iCloudContainerUrl{*this};
    Attribute<Date> createdAt{*this, platform::currentDate()};
    Attribute<Date> updatedAt{*this, platform::currentDate()};
};

}  // namespace quorvane
