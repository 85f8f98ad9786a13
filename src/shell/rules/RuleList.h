#pragma once

#include "base/Signal.h"
#include "shell/look/Card.h"
#include "shell/state/RulesDashboardView.h"

class QLineEdit;

namespace quorvane {

class EmptyState;
class Label;
class RuleListView;

/// The card at the left of the rules section: a search, the rules, or what stands there without any.
class RuleList : public Card {
public:
    RuleList(RulesDashboardView& state, const Localization& localization, QWidget* parent = nullptr);

    void focusSearch();
    [[nodiscard]] RuleListView& view() { return *view_; }
    /// Says in the foot that the rule is gone, until something else is done.
    void announceRemoval(const std::string& name);

    /// The built-in rules shall be imported: the button where no rule is.
    Signal<> importWanted;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLayout* makeSearch();
    void follow();

    RulesDashboardView& state_;
    const Localization& localization_;
    QLineEdit* search_;
    RuleListView* view_;
    EmptyState* none_;      ///< there is no rule
    EmptyState* notFound_;  ///< the search finds none
    Label* foot_;
};

}  // namespace quorvane
