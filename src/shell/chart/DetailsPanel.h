#pragma once

#include "base/Signal.h"
#include "l10n/Localization.h"
#include "platform/ApplicationIcons.h"
#include "shell/look/Card.h"
#include "timeline/DayTimelineChart.h"

#include <memory>

namespace quorvane {

/// `ActivityDetailsSidebar`: what is known of the chosen block, and what can be done with it. Shown while a block is
/// chosen; whoever owns it hides it else.
class DetailsPanel : public Card {
public:
    DetailsPanel(DayTimelineChart& chart, const platform::ApplicationIcons& icons, const Localization& localization,
                 QWidget* parent = nullptr);
    ~DetailsPanel() override;

    /// A check-circle takes the edit button's place for 2 s.
    void showMarkingSuccess();

    Signal<const ProcessedActivityItem&> categoryWanted;
    Signal<> closeWanted;

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace quorvane
