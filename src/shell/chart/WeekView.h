#pragma once

#include "diagnostics/ConsoleSink.h"
#include "l10n/Localization.h"
#include "shell/chart/OverviewArea.h"

#include <memory>

namespace quorvane {

/// Seven small days beside each other, and below them two cards with the week's applications and projects. A press on
/// a day opens it. It rebuilds when the section's records, assignments or date change while it is shown.
class WeekView : public OverviewArea {
public:
    WeekView(MyActivityView& activity, const Localization& localization, ConsoleSink& console,
             QWidget* parent = nullptr);
    ~WeekView() override;

protected:
    void rebuild() override;
    void minutePassed(Date now) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Parts;
    void arrange();
    void bringOnScreen(const QRect& day);

    std::unique_ptr<Parts> parts_;
};

}  // namespace quorvane
