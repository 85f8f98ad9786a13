#pragma once

#include "diagnostics/ConsoleSink.h"
#include "l10n/Localization.h"
#include "shell/state/MyActivityView.h"

#include <QScrollArea>
#include <memory>

namespace quorvane {

/// Seven small days beside each other, and below them two cards with the week's applications and projects. A press on
/// a day opens it. It rebuilds when the section's records, assignments or date change while it is shown.
class WeekView : public QScrollArea {
public:
    WeekView(MyActivityView& activity, const Localization& localization, ConsoleSink& console,
             QWidget* parent = nullptr);
    ~WeekView() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace quorvane
