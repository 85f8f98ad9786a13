#pragma once

#include "l10n/Localization.h"
#include "shell/look/Card.h"
#include "timeline/DayTimelineChart.h"

#include <memory>

namespace quorvane {

/// The left list of the day: hours of each application with their share, and hours of each project.
class LegendPanel : public Card {
public:
    LegendPanel(DayTimelineChart& chart, platform::RunLoop& runLoop, const Localization& localization,
                QWidget* parent = nullptr);
    ~LegendPanel() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace quorvane
