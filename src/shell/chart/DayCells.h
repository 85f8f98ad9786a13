#pragma once

#include "base/Date.h"
#include "base/Signal.h"
#include "shell/chart/PaintedParts.h"

#include <QRectF>
#include <QWidget>
#include <optional>
#include <vector>

namespace quorvane {

/// A painted canvas whose days are buttons: a tap, Enter or Space opens one, arrows move the focus between them, and
/// assistive technology meets each. It is one stop of the Tab key.
class DayCells : public QWidget, public PaintedParts {
public:
    struct Day {
        Date date;         ///< start of the day
        QRectF rectangle;  ///< what can be tapped
        QString name;      ///< for assistive technology
    };

    explicit DayCells(QWidget* parent = nullptr);

    Signal<Date> opened;
    /// The focus came to a day: the rectangle should be on screen.
    Signal<const QRect&> focusMoved;
    /// The focus goes on to a day that is not among the days.
    Signal<Date> left;

    /// The day where the focus starts; another one than before takes it along. For days that have been set.
    void startFocusAt(Date day);
    /// Null for a date that is not among the days.
    [[nodiscard]] QRect rectangleOf(Date date) const;

    [[nodiscard]] int partCount() const override { return static_cast<int>(days_.size()); }
    [[nodiscard]] QString partName(int part) const override { return day(part).name; }
    [[nodiscard]] QRect partRectangle(int part) const override { return day(part).rectangle.toAlignedRect(); }
    [[nodiscard]] QAccessible::Role partRole() const override { return QAccessible::Button; }
    [[nodiscard]] int focusedPart() const override;
    void pressPart(int part) override { opened.send(day(part).date); }

protected:
    /// Shows these days, ascending. The focus stays on its date if that is among them.
    void setDays(std::vector<Day> days);
    /// How far Up and Down move; 0: they are left to whoever scrolls.
    void setDaysInRow(int days) { daysInRow_ = days; }
    [[nodiscard]] const Day& day(int index) const { return days_[static_cast<std::size_t>(index)]; }
    [[nodiscard]] int dayAt(const QPointF& point) const;          ///< -1 for none
    [[nodiscard]] int hoveredDay() const { return hoveredDay_; }  ///< -1 for none
    /// The day round which the ring belongs; -1 while none is to be seen.
    [[nodiscard]] int ringedDay() const;
    /// What a point tells in a tooltip; may be empty.
    [[nodiscard]] virtual QString tipAt(const QPointF& point) const = 0;

    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    [[nodiscard]] int indexOf(std::optional<Date> date) const;
    void moveFocus(int steps);
    void tellFocus();
    void hover(int index);

    std::vector<Day> days_;
    int daysInRow_ = 0;
    std::optional<Date> focused_;  ///< none until it has been moved
    std::optional<Date> start_;
    int hoveredDay_ = -1;
    std::optional<Date> pressed_;
};

}  // namespace quorvane
