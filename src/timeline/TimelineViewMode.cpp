#include "timeline/TimelineViewMode.h"

namespace quorvane {

std::string label(TimelineViewMode mode, const Localization& localization) {
    switch (mode) {
    case TimelineViewMode::day: return localization.text("day_view");
    case TimelineViewMode::week: return localization.text("week_view");
    case TimelineViewMode::month: return localization.text("month_view");
    }
    return {};
}

}  // namespace quorvane
