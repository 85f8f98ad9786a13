#pragma once

#include "shell/look/Card.h"
#include "shell/state/RulesDashboardView.h"

#include <functional>

class QLineEdit;
class QListView;

namespace quorvane {

class EmptyState;
class Label;
class RuleRows;

/// The card at the left of the rules section: a search, the rules, or what stands there without any.
class RuleList : public Card {
public:
    struct Deeds {
        std::function<void()> edit;    ///< the rule was chosen: Enter or a click
        std::function<void()> remove;  ///< the selected rule shall go
        std::function<void()> import;  ///< the built-in rules are wanted
    };
    RuleList(RulesDashboardView& state, const Localization& localization, Deeds deeds, QWidget* parent = nullptr);

    void focusSearch();
    /// The rules, also while they are hidden.
    [[nodiscard]] QWidget* view() const;
    /// Says in the foot that the rule is gone, until something else is done.
    void announceRemoval(const std::string& name);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLayout* searchLine();
    void prepareView();
    void showRows();
    void showSelection();
    void choose(const QModelIndex& index);
    bool searchKey(int key);
    bool rowKey(int key);

    RulesDashboardView& state_;
    const Localization& localization_;
    Deeds deeds_;
    QLineEdit* search_;
    QListView* view_;
    RuleRows* rows_;
    EmptyState* none_;      ///< there is no rule
    EmptyState* notFound_;  ///< the search finds none
    Label* foot_;
    int lastRow_ = 0;  ///< where the selection was, for the keys after a removal
    bool isShowing_ = false;
};

}  // namespace quorvane
