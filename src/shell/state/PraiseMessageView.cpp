#include "shell/state/PraiseMessageView.h"

#include "praise/EffectiveUsage.h"

#include <utility>

namespace quorvane {
namespace {

std::string categoryName(PraiseCategory category, const Localization& localization) {
    switch (category) {
    case PraiseCategory::productivity: return localization.text("ui_praise_productivity");
    case PraiseCategory::creativity: return localization.text("ui_praise_creativity");
    case PraiseCategory::dedication: return localization.text("ui_praise_dedication");
    case PraiseCategory::achievement: return localization.text("ui_praise_achievement");
    case PraiseCategory::future: return localization.text("ui_praise_future");
    case PraiseCategory::comparison: return localization.text("ui_praise_comparison");
    case PraiseCategory::motivation: return localization.text("ui_praise_motivation");
    case PraiseCategory::humor: return localization.text("ui_praise_humor");
    case PraiseCategory::wisdom: return localization.text("ui_praise_wisdom");
    case PraiseCategory::success: return localization.text("ui_praise_success");
    case PraiseCategory::social: return localization.text("ui_praise_social");
    case PraiseCategory::entertainment: return localization.text("ui_praise_entertainment");
    }
    return {};
}

}  // namespace

PraiseMessageView::PraiseMessageView(platform::RunLoop& runLoop, RandomWords random)
    : runLoop_(runLoop), random_(std::move(random)) {}

void PraiseMessageView::setRecords(std::vector<TimelineRecordSnapshot> records) {
    if (records == records_) return;
    records_ = std::move(records);
    recordsChanged();
}

void PraiseMessageView::generatePraise() {
    Praise praise = PraiseMessageDatabase::generatePraise(
        {.day = {.records = records_, .hours = totalHours_, .now = runLoop_.now()},
         .settings = appSettings_.get(),
         .selectedLanguage = localizedLanguage_,
         .category = currentCategory_,
         .lastId = lastMessageId_},
        random_);
    // Its own pick and not a second one: the share card goes on from the row whose sentence is read here.
    currentMessageData_ = inLanguage(*praise.row, {.effective = praise.language, .selected = localizedLanguage_});
    currentMessage_ = std::move(praise.message);
    currentReason_ = std::move(praise.reason);
    lastMessageId_ = std::move(praise.id);
    changed.send();
}

void PraiseMessageView::setLocalizedLanguage(std::optional<SupportedLanguage> language) {
    if (language == localizedLanguage_) return;
    localizedLanguage_ = language;
    generatePraise();
}

void PraiseMessageView::setCurrentCategory(std::optional<PraiseCategory> category) {
    if (category == currentCategory_) return;
    currentCategory_ = category;
    generatePraise();
}

void PraiseMessageView::setShowingShareWindow(bool isShowing) {
    if (isShowing == showingShareWindow_) return;
    showingShareWindow_ = isShowing;
    changed.send();
}

std::vector<PraiseMessageView::MenuItem<SupportedLanguage>>
PraiseMessageView::languages(const Localization& localization) {
    std::vector<MenuItem<SupportedLanguage>> items{{.text = localization.text("ui_praise_automatic")}};
    for (const auto& [language, code] : RawValues<SupportedLanguage>::table)
        items.push_back({.value = language, .text = std::string(displayName(language))});
    return items;
}

std::vector<PraiseMessageView::MenuItem<PraiseCategory>>
PraiseMessageView::categories(const Localization& localization) {
    std::vector<MenuItem<PraiseCategory>> items{{.text = localization.text("ui_praise_automatic")}};
    for (const auto& [category, name] : RawValues<PraiseCategory>::table)
        items.push_back({.value = category, .text = categoryName(category, localization)});
    return items;
}

void PraiseMessageView::recordsChanged() {
    const Date now = runLoop_.now();
    if (lastStatsCalculationTime_) {
        // A clock that was set back has no say: the wait is never longer than the interval.
        const Seconds passed = now - *lastStatsCalculationTime_;
        if (passed >= 0s && passed < minStatsCalculationInterval) {
            pendingStatsCalculation_ = runLoop_.after(minStatsCalculationInterval - passed, [weak = weak_.handle()] {
                if (auto* self = weak.get()) self->calculateStats();
            });
            return;
        }
    }
    calculateStats();
    lastStatsCalculationTime_ = now;
}

void PraiseMessageView::calculateStats() {
    appStats_ = effectiveUsage(records_, runLoop_.now());
    changed.send();
}

}  // namespace quorvane
