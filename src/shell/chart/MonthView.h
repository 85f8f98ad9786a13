#pragma once

#include "diagnostics/ConsoleSink.h"
#include "l10n/Localization.h"
#include "shell/chart/OverviewArea.h"

#include <memory>

namespace quorvane {

/// The days of a month as a calendar whose cells list the larger items. A press on a day opens it. It rebuilds when the
/// section's records, assignments or date change while it is shown.
class MonthView : public OverviewArea {
public:
    MonthView(MyActivityView& activity, const Localization& localization, ConsoleSink& console,
              QWidget* parent = nullptr);
    ~MonthView() override;

protected:
    void rebuild() override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Parts;
    void arrange();

    std::unique_ptr<Parts> parts_;
};

}  // namespace quorvane
