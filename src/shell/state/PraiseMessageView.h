#pragma once

#include "base/Signal.h"
#include "base/Weak.h"
#include "l10n/Localization.h"
#include "platform/RunLoop.h"
#include "praise/PraiseMessageDatabase.h"
#include "store/AppSettings.h"
#include "timeline/AppStatistics.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// The card beside the timeline without its pixels: a cheerful sentence about the day, why it is said, and how long
/// each application was used. What it is made on outlives it. Main thread only.
class PraiseMessageView {
public:
    /// Statistics that records ask for sooner than this after the last ones wait for the rest of it.
    static constexpr Seconds minStatsCalculationInterval = 2s;

    /// An entry of the menus; none as its value leaves the choice to the application.
    template <class Value>
    struct MenuItem {
        std::optional<Value> value{};
        std::string text;
        friend bool operator==(const MenuItem&, const MenuItem&) = default;
    };

    explicit PraiseMessageView(platform::RunLoop& runLoop, RandomWords random = secureRandomWord);
    PraiseMessageView(const PraiseMessageView&) = delete;
    PraiseMessageView& operator=(const PraiseMessageView&) = delete;

    /// The records of the day. When they change, the statistics follow, at once or a little later; the sentence stays.
    void setRecords(std::vector<TimelineRecordSnapshot> records);
    void setTotalHours(double hours) { totalHours_ = hours; }
    void setAppSettings(std::shared_ptr<const AppSettings> settings) { appSettings_ = std::move(settings); }

    /// The card comes on screen: the first sentence.
    void appear() { generatePraise(); }
    /// Another sentence, for whoever asks for one.
    void generatePraise();
    /// A change of these two brings another sentence.
    void setLocalizedLanguage(std::optional<SupportedLanguage> language);
    void setCurrentCategory(std::optional<PraiseCategory> category);
    /// The share window opens, or is gone.
    void setShowingShareWindow(bool isShowing);

    [[nodiscard]] static std::vector<MenuItem<SupportedLanguage>> languages(const Localization& localization);
    [[nodiscard]] static std::vector<MenuItem<PraiseCategory>> categories(const Localization& localization);

    [[nodiscard]] const std::vector<TimelineRecordSnapshot>& records() const { return records_; }
    [[nodiscard]] double totalHours() const { return totalHours_; }
    [[nodiscard]] const AppSettings* appSettings() const { return appSettings_.get(); }
    [[nodiscard]] std::optional<SupportedLanguage> localizedLanguage() const { return localizedLanguage_; }
    [[nodiscard]] std::optional<PraiseCategory> currentCategory() const { return currentCategory_; }
    /// Empty until the card comes on screen.
    [[nodiscard]] const std::string& currentMessage() const { return currentMessage_; }
    [[nodiscard]] const std::optional<std::string>& currentReason() const { return currentReason_; }
    /// The row of the sentence on screen, in its language.
    [[nodiscard]] const std::optional<PraiseMessage>& currentMessageData() const { return currentMessageData_; }
    [[nodiscard]] const std::optional<std::string>& lastMessageId() const { return lastMessageId_; }
    [[nodiscard]] bool showingShareWindow() const { return showingShareWindow_; }
    /// See `effectiveUsage`.
    [[nodiscard]] const std::vector<AppStat>& appStats() const { return appStats_; }
    [[nodiscard]] std::optional<Date> lastStatsCalculationTime() const { return lastStatsCalculationTime_; }

    /// Sent after the sentence, the statistics or a choice has changed.
    Signal<> changed;

private:
    void recordsChanged();
    void calculateStats();

    platform::RunLoop& runLoop_;
    RandomWords random_;
    std::vector<TimelineRecordSnapshot> records_;
    double totalHours_ = 0;
    std::shared_ptr<const AppSettings> appSettings_;
    std::optional<SupportedLanguage> localizedLanguage_;
    std::optional<PraiseCategory> currentCategory_;
    std::string currentMessage_;
    std::optional<std::string> currentReason_;
    std::optional<PraiseMessage> currentMessageData_;
    std::optional<std::string> lastMessageId_;
    bool showingShareWindow_ = false;
    std::vector<AppStat> appStats_;
    std::optional<Date> lastStatsCalculationTime_;
    std::unique_ptr<platform::WorkItem> pendingStatsCalculation_;
    WeakSource<PraiseMessageView> weak_{*this};
};

}  // namespace quorvane
