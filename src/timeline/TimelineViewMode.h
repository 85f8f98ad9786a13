#pragma once

#include "base/RawValue.h"
#include "l10n/Localization.h"

#include <string>

namespace quorvane {

/// How much time the chart shows.
enum class TimelineViewMode { day, week, month };

template <>
struct RawValues<TimelineViewMode> {
    static constexpr RawValueTable<TimelineViewMode, 3> table{
        {{TimelineViewMode::day, "day"}, {TimelineViewMode::week, "week"}, {TimelineViewMode::month, "month"}}};
};

[[nodiscard]] std::string label(TimelineViewMode mode, const Localization& localization);

}  // namespace quorvane
