#pragma once

#include "l10n/Localization.h"
#include "timeline/DayTimelineChart.h"

#include <QWidget>

class QComboBox;
class QHBoxLayout;

namespace quorvane {

class Button;
class Label;
class SegmentedControl;

/// What stands over the timeline: which time, which mode, and how high the hours are.
class DateHeader : public QWidget {
public:
    DateHeader(DayTimelineChart& chart, platform::RunLoop& runLoop, const Localization& localization,
               QWidget* parent = nullptr);

    void setMode(TimelineViewMode mode);
    void goToToday();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void buildDates(QHBoxLayout& row);
    void buildModes(QHBoxLayout& row);
    void buildZoom(QHBoxLayout& row);
    void showState();
    void adaptTo(int width);

    DayTimelineChart& chart_;
    platform::RunLoop& runLoop_;
    const Localization& localization_;
    Button* back_ = nullptr;
    Label* date_ = nullptr;
    Button* forward_ = nullptr;
    Button* today_ = nullptr;
    SegmentedControl* modes_ = nullptr;
    QComboBox* modesCompact_ = nullptr;
    Button* zoomOut_ = nullptr;
    Label* zoomValue_ = nullptr;
    Button* zoomIn_ = nullptr;
};

}  // namespace quorvane
