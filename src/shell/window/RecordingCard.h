#pragma once

#include "base/Signal.h"
#include "l10n/Localization.h"
#include "platform/RunLoop.h"
#include "store/ModelContext.h"
#include "tracking/ActivityTracker.h"

#include <QWidget>

class QBoxLayout;
class QPushButton;

namespace quorvane {

class Label;

/// Says whether time is recorded, of which application and since when, or why it isn't, and pauses or starts it. It
/// stands in the window because not every desktop shows a tray.
class RecordingCard : public QWidget {
public:
    RecordingCard(ActivityTracker& tracker, ModelContext& context, platform::RunLoop& runLoop,
                  const Localization& localization, QWidget* parent = nullptr);
    /// Sent when somebody wants to know what can't be seen.
    Signal<> healthWanted;

    /// On a rail it is the button alone, with a dot on it.
    void setRail(bool isRail);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void showState();
    void showRecord();
    void showTrouble();
    void showHealth();
    void showSoon();

    ActivityTracker& tracker_;
    platform::RunLoop& runLoop_;
    const Localization& localization_;
    Label* state_;
    Label* application_;
    Label* since_;
    QWidget* health_;  ///< what can't be seen, and the way to where it is mended
    Label* missing_;
    QPushButton* fix_;
    QPushButton* toggle_;
    bool isShownSoon_ = false;  ///< records change in bursts; they are shown once
    bool isRail_ = false;
};

}  // namespace quorvane
