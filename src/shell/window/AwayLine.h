#pragma once

#include "l10n/Localization.h"
#include "shell/look/Card.h"
#include "shell/state/AbsenceOffer.h"

class QPushButton;

namespace quorvane {

class Label;

/// Says over the timeline what an `AbsenceOffer` has to say, with its answers. It never takes the focus; Tab leads to
/// it. Its owner shows and places it.
class AwayLine : public Card {
public:
    static constexpr int lineWidth = 348;

    AwayLine(AbsenceOffer& offer, const Localization& localization, QWidget* parent = nullptr);

    /// Takes over what the offer says now; false if that is nothing.
    [[nodiscard]] bool refresh();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    AbsenceOffer& offer_;
    const Localization& localization_;
    std::optional<AbsenceOffer::Content> shown_;
    Label* title_;
    Label* text_;
    QPushButton* leave_;
};

}  // namespace quorvane
