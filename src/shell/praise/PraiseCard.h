#pragma once

#include "base/Signal.h"
#include "l10n/Localization.h"
#include "shell/look/Card.h"
#include "shell/state/PraiseMessageView.h"

#include <memory>

namespace quorvane {

/// The day's cheerful sentence, why it is said, what kind of sentence it is, and the way to the share window.
class PraiseCard : public Card {
public:
    enum class Form {
        full,
        compact,  ///< the two choices stand in a menu, for low windows
        line,     ///< one line with the sentence and the buttons, for narrow windows
    };

    PraiseCard(PraiseMessageView& state, const Localization& localization, QWidget* parent = nullptr);
    ~PraiseCard() override;

    void setForm(Form form);
    [[nodiscard]] Form form() const;

    /// The user wants the share window; the state knows by then.
    Signal<> shareWanted;

private:
    struct Parts;

    void build();
    void arrange();
    void follow();
    void showMenu();

    std::unique_ptr<Parts> parts_;
};

}  // namespace quorvane
