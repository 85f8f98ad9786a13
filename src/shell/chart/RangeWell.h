#pragma once

#include "base/Signal.h"
#include "l10n/Localization.h"
#include "shell/look/Card.h"
#include "timeline/DayTimelineGeometry.h"

namespace quorvane {

class Label;
class QuarterField;

/// A range of the day as two times that can be changed, and its length.
class RangeWell : public Well {
public:
    explicit RangeWell(const Localization& localization, QWidget* parent = nullptr);

    /// Without `rangeChosen`. `length` is how long it lasts: where clocks change, not what lies between its hours.
    void setRange(const TimeRange& range, Seconds length);
    /// A bound that wasn't touched keeps what is below a minute. At least a quarter of an hour.
    Signal<const TimeRange&> rangeChosen;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void choose();

    TimeRange range_;
    QuarterField* start_;
    QuarterField* end_;
    Label* length_;
};

}  // namespace quorvane
