#pragma once

#include "l10n/Localization.h"
#include "timeline/DayTimelineChart.h"

#include <QWidget>

class QComboBox;
class QHBoxLayout;
class QPushButton;
class QTabBar;

namespace quorvane {

class Label;

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
    QPushButton* back_ = nullptr;
    Label* date_ = nullptr;
    QPushButton* forward_ = nullptr;
    QPushButton* today_ = nullptr;
    QTabBar* modes_ = nullptr;
    QComboBox* modesCompact_ = nullptr;
    QPushButton* zoomOut_ = nullptr;
    Label* zoomValue_ = nullptr;
    QPushButton* zoomIn_ = nullptr;
};

}  // namespace quorvane
