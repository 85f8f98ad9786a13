#pragma once

#include <QPixmap>
#include <functional>

class QWidget;

namespace quorvane {

/// A sheet's way in and out: its scrim fades and a picture of its panel fades and rises by 8, so that nothing has to be
/// blended live.
struct SheetMotion {
    double progress = 1;  ///< 0: not there, 1: in its place
    QPixmap picture;      ///< null while it does not move

    [[nodiscard]] bool isMoving() const { return !picture.isNull(); }
    /// Moves to 0 or to 1, calls `moved` with each step and `arrived` at the end. Immediate where nothing may move.
    void start(QWidget& sheet, QWidget& panel, bool isIn, const std::function<void()>& moved,
               const std::function<void()>& arrived);
};

}  // namespace quorvane
