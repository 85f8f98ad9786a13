#pragma once

#include "base/Signal.h"
#include "base/Weak.h"
#include "diagnostics/ConsoleSink.h"
#include "l10n/Localization.h"
#include "platform/RunLoop.h"
#include "rules/BuiltInRuleTemplates.h"
#include "rules/CategoryTagManager.h"
#include "rules/RuleDraft.h"
#include "shell/state/RuleRow.h"
#include "store/LiveQuery.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// The rules section without its pixels: all rules in the order in which they run, a search among them, one that may be
/// selected, and the draft that the form edits. Nothing throws. Main thread only; what it is made on outlives it.
class RulesDashboardView {
public:
    RulesDashboardView(ModelContext& context, platform::RunLoop& runLoop, const CategoryTagManager& categories,
                       const Localization& localization, ConsoleSink& console);
    RulesDashboardView(const RulesDashboardView&) = delete;
    RulesDashboardView& operator=(const RulesDashboardView&) = delete;

    /// The rules that the search finds: smallest priority first, among equals the one edited last.
    [[nodiscard]] const std::vector<RuleRow>& rows() const { return rows_; }
    /// Is there no rule at all, whatever the search?
    [[nodiscard]] bool isEmpty() const { return allRows_.empty(); }
    [[nodiscard]] const std::string& search() const { return search_; }
    void setSearch(std::string search);

    [[nodiscard]] const std::shared_ptr<Rule>& selectedRule() const { return selectedRule_; }  ///< null for none
    [[nodiscard]] const RuleDraft& draft() const { return draft_; }
    /// What the form is for: the draft's rule in a sentence or two.
    [[nodiscard]] std::string summary() const;
    /// Every category that the form offers: the built-in ones, the user's own, and the draft's if it is none of them.
    [[nodiscard]] std::vector<std::string> categories() const;
    /// The projects that the form offers by name: those that aren't archived, and the draft's.
    [[nodiscard]] std::vector<std::shared_ptr<Project>> projects() const;

    /// Fills the draft with the rule; what was edited before is given up. Null is `startNew`.
    void select(const std::shared_ptr<Rule>& rule);
    /// Selects nothing and empties the draft.
    void startNew();
    void edit(const std::function<void(RuleDraft&)>& change);
    /// Writes the draft into the selected rule, or makes a rule of it and selects that. Nothing happens while it can't
    /// be saved. A store that refuses keeps it pending, silently.
    void save();
    /// Removes the selected rule and starts a new one. Null if none was selected, else the removed rule.
    std::shared_ptr<Rule> removeSelected();
    /// Adds the built-in rules that aren't there; none, with a line, if the rules can't be read.
    std::optional<BuiltInRuleTemplates::ImportResult> importBuiltInRules();
    /// Reads anew, for what another program has changed.
    void refresh();

    /// Rules, projects or what the search finds has changed; changes of others are told together in the loop's next
    /// turn.
    Signal<> rowsChanged;
    /// The draft is another one, or was edited.
    Signal<> draftChanged;

private:
    void follow();
    void describeSoon();
    void describeRows();
    void find();
    void replaceDraft(const std::shared_ptr<Rule>& rule, RuleDraft draft);
    void saveSilently();

    ModelContext& context_;
    platform::RunLoop& runLoop_;
    const CategoryTagManager& categories_;
    const Localization& localization_;
    ConsoleSink& console_;
    std::optional<LiveQuery<Rule>> rules_;
    std::optional<LiveQuery<Project>> projects_;
    std::vector<RuleRow> allRows_;
    std::vector<RuleRow> rows_;
    std::string search_;
    std::shared_ptr<Rule> selectedRule_;
    RuleDraft draft_;
    bool isDescriptionDue_ = false;
    Subscription rulesChanged_;
    Subscription projectsChanged_;
    WeakSource<RulesDashboardView> weak_{*this};
};

}  // namespace quorvane
