#include "shell/state/RulesDashboardView.h"

#include "store/StoreError.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quorvane {

RulesDashboardView::RulesDashboardView(ModelContext& context, platform::RunLoop& runLoop,
                                       const CategoryTagManager& categories, const Localization& localization,
                                       ConsoleSink& console)
    : context_(context), runLoop_(runLoop), categories_(categories), localization_(localization), console_(console) {
    follow();
    describeRows();
}

void RulesDashboardView::follow() {
    try {
        projects_.emplace(context_, FetchDescriptor<Project>{.sort = {ascending(&Project::name)}});
        rules_.emplace(context_,
                       FetchDescriptor<Rule>{.sort = {ascending(&Rule::priority), descending(&Rule::updatedAt)}});
    } catch (const StoreError& error) {
        return console_.line("RulesDashboardView: Failed to fetch rules: {}", error.what());
    }
    projectsChanged_ = projects_->didChange.subscribe([this](const QueryChange<Project>&) { describeSoon(); });
    rulesChanged_ = rules_->didChange.subscribe([this](const QueryChange<Rule>& change) {
        // Removed elsewhere: what stands in the form would become a new rule.
        if (std::ranges::find(change.removed, selectedRule_) != change.removed.end())
            replaceDraft(nullptr, std::exchange(draft_, {}));
        describeSoon();
    });
}

void RulesDashboardView::refresh() {
    if (!rules_ || !projects_) return;
    try {
        projects_->refresh();
        rules_->refresh();
    } catch (const StoreError& error) {
        console_.line("RulesDashboardView: Failed to fetch rules: {}", error.what());
    }
}

// Changes come one by one, for each attribute of each rule: they are described together in the loop's next turn.
void RulesDashboardView::describeSoon() {
    if (std::exchange(isDescriptionDue_, true)) return;
    runLoop_.post([weak = weak_.handle()] {
        if (auto* const self = weak.get(); self != nullptr && self->isDescriptionDue_) self->describeRows();
    });
}

void RulesDashboardView::describeRows() {
    isDescriptionDue_ = false;
    allRows_.clear();
    if (rules_ && projects_) {
        allRows_.reserve(rules_->results().size());
        for (const auto& rule : rules_->results())
            allRows_.push_back(describe(rule, projects_->results(), localization_));
    }
    find();
}

void RulesDashboardView::find() {
    rows_.clear();
    std::ranges::copy_if(allRows_, std::back_inserter(rows_),
                         [this](const RuleRow& row) { return row.matches(search_); });
    rowsChanged.send();
}

void RulesDashboardView::setSearch(std::string search) {
    if (search == search_) return;
    search_ = std::move(search);
    find();
}

std::string RulesDashboardView::summary() const {
    return draft_.summary(localization_, projects_ ? projects_->results() : std::vector<std::shared_ptr<Project>>());
}

std::vector<std::string> RulesDashboardView::categories() const {
    return categories_.allCategories(draft_.category);
}

std::vector<std::shared_ptr<Project>> RulesDashboardView::projects() const {
    std::vector<std::shared_ptr<Project>> offered;
    if (!projects_) return offered;
    std::ranges::copy_if(projects_->results(), std::back_inserter(offered), [this](const auto& project) {
        return !project->isArchived() || project->id() == draft_.projectId;
    });
    return offered;
}

void RulesDashboardView::replaceDraft(const std::shared_ptr<Rule>& rule, RuleDraft draft) {
    selectedRule_ = rule;
    draft_ = std::move(draft);
    draftChanged.send();
}

void RulesDashboardView::select(const std::shared_ptr<Rule>& rule) {
    if (rule == nullptr) return startNew();
    replaceDraft(rule, RuleDraft(*rule));
}

void RulesDashboardView::startNew() {
    replaceDraft(nullptr, {});
}

void RulesDashboardView::edit(const std::function<void(RuleDraft&)>& change) {
    change(draft_);
    draftChanged.send();
}

void RulesDashboardView::save() {
    if (!draft_.canSave()) return;
    const bool isNew = selectedRule_ == nullptr;
    const auto rule = isNew ? std::make_shared<Rule>() : selectedRule_;
    draft_.writeTo(*rule);
    if (isNew) {
        rule->createdAt = rule->updatedAt();
        context_.insert(rule);
    }
    saveSilently();
    describeRows();
    select(rule);
}

std::shared_ptr<Rule> RulesDashboardView::removeSelected() {
    auto removed = std::exchange(selectedRule_, nullptr);
    if (removed == nullptr) return nullptr;
    context_.remove(removed);
    saveSilently();
    describeRows();
    startNew();
    return removed;
}

std::optional<BuiltInRuleTemplates::ImportResult> RulesDashboardView::importBuiltInRules() {
    try {
        const auto result = BuiltInRuleTemplates::importAll(context_, localization_);
        describeRows();
        return result;
    } catch (const StoreError& error) {
        console_.line("RulesDashboardView: Failed to import rules: {}", error.what());
        return std::nullopt;
    }
}

void RulesDashboardView::saveSilently() {
    try {
        context_.save();
    } catch (const StoreError&) {
        // Stays pending and goes with the next save; the list shows it already.
    }
}

}  // namespace quorvane
