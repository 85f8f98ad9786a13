#pragma once

#include "l10n/Localization.h"
#include "timeline/DayTimelineChart.h"

#include <QWidget>

class QAction;
class QPushButton;

namespace quorvane {

class TextField;
class TonePicker;

/// The part of the panel that makes a new project: its name, its colour, and the two answers. What is typed goes to
/// the chart's selector at once.
class ProjectFoot : public QWidget {
public:
    ProjectFoot(DayTimelineChart& chart, const Localization& localization, QWidget* parent = nullptr);

    /// Shows what the selector says.
    void refresh();

private:
    void create();

    DayTimelineChart& chart_;
    const Localization& localization_;
    TextField* name_;
    QAction* enter_;
    TonePicker* tones_;
    QPushButton* create_;
};

}  // namespace quorvane
