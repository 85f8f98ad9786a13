#pragma once

#include <array>
#include <set>

namespace quorvane {

/// Where the hours of a day stand on the chart: a row for each, high where something happened, 16 points where nothing
/// did. Positions are points from the top. Cheap to copy; asking it allocates nothing.
class HourLayout {
public:
    static constexpr double inactiveHeight = 16;
    static constexpr double defaultHourHeight = 180;

    /// All 24 rows at the default height, as before anything is known.
    HourLayout();

    /// Rows of `hourHeight` (> 0) for the active hours (0 to 23).
    HourLayout(const std::set<int>& activeHours, double hourHeight);

    [[nodiscard]] const std::array<double, 24>& heights() const { return heights_; }
    [[nodiscard]] const std::array<double, 25>& offsets() const { return offsets_; }
    [[nodiscard]] double totalHeight() const { return offsets_[24]; }

    /// The position of an hour, which is clamped to 0 to 24.
    [[nodiscard]] double yPosition(double hour) const;

    /// The hour at a position, 0 to 24; the other way round.
    [[nodiscard]] double hourForY(double y) const;

private:
    HourLayout(const std::set<int>& activeHours, double hourHeight, double otherHeight);

    std::array<double, 24> heights_{};
    std::array<double, 25> offsets_{};
};

}  // namespace quorvane
