#pragma once

#include "base/Date.h"
#include "base/Uuid.h"
#include "store/Entity.h"

#include <optional>
#include <string>

namespace quorvane {

/// A record that a pass took out of the day, or the piece of time that it cut off one. Dumps leave it out.
class TrashedRecord final : public Entity {
public:
    [[nodiscard]] static const EntityDescription& description();
    [[nodiscard]] const EntityDescription& entityDescription() const override { return description(); }

    Attribute<Uuid> recordId{*this};
    Attribute<Date> removedAt{*this};
    Attribute<std::string> pass{*this};                ///< see `RecordTrash::Pass`
    Attribute<std::string> record{*this};              ///< the whole row, as a dump has it
    Attribute<std::optional<Date>> restoredAt{*this};  ///< since then the record is back, and no pass touches it
};

}  // namespace quorvane
