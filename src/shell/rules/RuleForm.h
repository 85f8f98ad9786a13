#pragma once

#include "base/Signal.h"
#include "shell/look/Card.h"
#include "shell/state/RulesDashboardView.h"

#include <memory>

namespace quorvane {

/// The form of a rule: it shows the draft, edits it, and says in words what it does.
class RuleForm : public Card {
public:
    RuleForm(RulesDashboardView& state, const Localization& localization, QWidget* parent = nullptr);
    ~RuleForm() override;

    void focusName();

    /// The button that removes the stored rule.
    Signal<> removalWanted;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace quorvane
