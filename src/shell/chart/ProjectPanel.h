#pragma once

#include "l10n/Localization.h"
#include "shell/look/Card.h"
#include "timeline/DayTimelineChart.h"

#include <memory>

namespace quorvane {

/// `ProjectSelectorSidebar`: gives the chosen range to a project, an old one or a new one. Two time fields change the
/// range by the keyboard. Shown while the chart's selector is open; whoever owns it hides it else.
class ProjectPanel : public Card {
public:
    ProjectPanel(DayTimelineChart& chart, const Localization& localization, QWidget* parent = nullptr);
    ~ProjectPanel() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace quorvane
