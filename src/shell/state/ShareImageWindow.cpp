#include "shell/state/ShareImageWindow.h"

#include "base/Json.h"
#include "billing/FileNameTime.h"
#include "shell/state/PraiseMessageView.h"

#include <algorithm>
#include <utility>

namespace quorvane {

ShareImageWindow::ShareImageWindow(Inputs inputs, ImageGenerator imageGenerator, double previewScale,
                                   platform::RunLoop& runLoop, ConsoleSink& console, RandomWords random)
    : inputs_(std::move(inputs)), imageGenerator_(std::move(imageGenerator)), previewScale_(previewScale),
      runLoop_(runLoop), console_(console), random_(std::move(random)) {
    openWithSentence();
    workingAppStats_ = inputs_.appStats;
    console_.line("📊 ShareImageWindow - appStats count: {}", workingAppStats_.size());
    colorStats(workingAppStats_, selectedColorScheme_);
}

/// The sentence that was read on the main screen stays.
void ShareImageWindow::openWithSentence() {
    if (!inputs_.initialPraiseMessage || !inputs_.initialPraiseMessageData) {
        console_.write("🔄 生成新的消息");
        return generatePraise();
    }
    currentPraiseMessage_ = *inputs_.initialPraiseMessage;
    currentPraiseMessageData_ = inputs_.initialPraiseMessageData;
    currentPraiseReason_ = inputs_.initialPraiseReason;
    lastPraiseMessageId_ = currentPraiseMessageData_->id;
    console_.line("✅ 使用主界面选中的消息: {}, totalHours: {}", currentPraiseMessage_,
                  jsonText(Json(inputs_.totalHours)));
}

void ShareImageWindow::generatePraise() {
    const SupportedLanguage language =
        inputs_.preferredLanguage.value_or(PraiseMessageDatabase::detectSystemLanguage());
    Praise praise = PraiseMessageDatabase::generatePraise(
        {.day = {.records = inputs_.records, .hours = inputs_.totalHours, .now = runLoop_.now()},
         .selectedLanguage = language,
         .lastId = lastPraiseMessageId_},
        random_);
    currentPraiseMessageData_ = inLanguage(*praise.row, {.effective = praise.language, .selected = language});
    currentPraiseMessage_ = std::move(praise.message);
    currentPraiseReason_ = std::move(praise.reason);
    lastPraiseMessageId_ = std::move(praise.id);
}

ShareImageConfig ShareImageWindow::config() const {
    return config(selectedStyle_, selectedAppKey_);
}

ShareImageConfig ShareImageWindow::config(CardStyle style, const std::optional<std::string>& key) const {
    return shareImageConfig({.style = style,
                             .scheme = selectedColorScheme_,
                             .message = currentPraiseMessage_,
                             .reason = currentPraiseReason_,
                             .totalHours = inputs_.totalHours,
                             .appStats = workingAppStats_,
                             .date = inputs_.date,
                             .forceShowAppChart = forceShowAppChart_,
                             .showTimeDistribution = showTimeDistribution_,
                             .selectedAppKey = key});
}

ShareImageWindow::Image ShareImageWindow::rendered(const ShareImageConfig& config, double scale) const {
    auto image = imageGenerator_(config, scale);
    return image ? std::make_shared<const ShareImage>(std::move(*image)) : nullptr;
}

void ShareImageWindow::generateImage() {
    const ShareImageConfig shown = config();
    console_.line("🖼️ Generating image - showTimeDistribution: {}, shouldShowAppChart: {}, appStats count: {}",
                  shown.showTimeDistribution, shown.shouldShowAppChart, shown.appStats.size());
    generatedImage_ = rendered(shown, 1);
    hasTried_ = true;
    changed.send();
}

bool ShareImageWindow::renderNext() {
    if (!hasTried_) {
        generateImage();
        return true;
    }
    for (const auto& [style, name] : RawValues<CardStyle>::table) {
        if (styleImages_.contains(style)) continue;
        styleImages_[style] = rendered(config(style, std::nullopt), previewScale_);
        changed.send();
        return true;
    }
    for (const AppStat& stat : workingAppStats_) {
        const std::string key = appKey(stat);
        if (previewImages_.contains(key)) continue;
        previewImages_[key] = rendered(config(selectedStyle_, key), previewScale_);
        changed.send();
        return true;
    }
    return false;
}

/// The card at once, its small pictures by and by.
void ShareImageWindow::regenerate(bool alsoStyles) {
    previewImages_.clear();
    if (alsoStyles) styleImages_.clear();
    generateImage();
}

void ShareImageWindow::shuffle() {
    generatePraise();
    regenerate(true);
}

void ShareImageWindow::close() {
    if (!std::exchange(isPresented_, false)) return;
    if (inputs_.dismissed) inputs_.dismissed();
}

void ShareImageWindow::setSelectedStyle(CardStyle style) {
    if (style == selectedStyle_) return;
    selectedStyle_ = style;
    regenerate(false);
}

void ShareImageWindow::setSelectedColorScheme(ColorScheme scheme) {
    if (scheme == selectedColorScheme_) return;
    selectedColorScheme_ = scheme;
    colorStats(workingAppStats_, scheme);
    regenerate(true);
}

void ShareImageWindow::setShowTimeDistribution(bool isShown) {
    if (isShown == showTimeDistribution_) return;
    showTimeDistribution_ = isShown;
    regenerate(true);
}

void ShareImageWindow::setForceShowAppChart(bool isForced) {
    if (isForced == forceShowAppChart_) return;
    forceShowAppChart_ = isForced;
    regenerate(true);
}

void ShareImageWindow::setSelectedAppKey(const std::optional<std::string>& key) {
    if (key == selectedAppKey_) return;
    selectedAppKey_ = key;
    generateImage();
}

void ShareImageWindow::setHighlighting(bool isHighlighting) {
    if (!isHighlighting) return setSelectedAppKey(std::nullopt);
    if (selectedAppKey_ || workingAppStats_.empty()) return;
    setSelectedAppKey(appKey(*std::ranges::max_element(workingAppStats_, {}, &AppStat::hours)));
}

void ShareImageWindow::share() {
    if (generatedImage_ == nullptr) return;
    showingShareSheet_ = true;
    changed.send();
}

std::vector<std::vector<AppStat>> ShareImageWindow::groupedPreviews() const {
    std::vector<std::vector<AppStat>> groups;
    for (const AppStat& stat : workingAppStats_) {
        if (groups.empty() || groups.back().size() == previewsInRow) groups.emplace_back();
        groups.back().push_back(stat);
    }
    return groups;
}

std::string ShareImageWindow::suggestedFileName(const Localization& localization) const {
    return localization.text("share_card_file_name", fileNameTime(runLoop_.now())) + ".png";
}

std::string ShareImageWindow::placeholder(const Localization& localization) const {
    return hasTried_ ? localization.text("share_card_waiting_data") : localization.text("share_card_generating");
}

ShareImageWindow::Inputs shareImageInputs(PraiseMessageView& praise, Date date) {
    auto language = praise.localizedLanguage();
    if (!language && praise.appSettings() != nullptr)
        language = fromRawValue<SupportedLanguage>(praise.appSettings()->preferredLanguage());
    const bool hasSentence = praise.currentMessageData().has_value();
    return {.records = praise.records(),
            .totalHours = praise.totalHours(),
            .appStats = praise.appStats(),
            .date = date,
            .preferredLanguage = language,
            .initialPraiseMessage = hasSentence ? std::optional(praise.currentMessage()) : std::nullopt,
            .initialPraiseMessageData = praise.currentMessageData(),
            .initialPraiseReason = praise.currentReason(),
            .dismissed = [&praise] { praise.setShowingShareWindow(false); }};
}

}  // namespace quorvane
