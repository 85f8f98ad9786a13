#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

/// The name in a bar of the week. Sizes are points.
struct WeekTimelineLabel {
    static constexpr double padding = 2;

    std::string text;   ///< cut to what the width allows
    double width = 0;   ///< of the bar
    double height = 0;  ///< of the bar

    [[nodiscard]] double fontSize() const { return height < 12 ? 8 : 9; }
    [[nodiscard]] double capsuleHeight() const;

    [[nodiscard]] static double textOpacity(bool isDark) { return isDark ? 0.82 : 0.75; }
    [[nodiscard]] static double backgroundOpacity(bool isDark) { return isDark ? 0.42 : 0.72; }

    friend bool operator==(const WeekTimelineLabel&, const WeekTimelineLabel&) = default;
};

/// The label of a bar of this size; none where it is too narrow for one.
[[nodiscard]] std::optional<WeekTimelineLabel> weekTimelineLabel(std::string_view name, double width, double height);

}  // namespace quorvane
