#pragma once

#include "base/Signal.h"
#include "diagnostics/ConsoleSink.h"
#include "l10n/Localization.h"
#include "platform/RunLoop.h"
#include "praise/PraiseMessageDatabase.h"
#include "praise/ShareImage.h"
#include "praise/ShareImageConfig.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// The share window without its pixels: the chosen style, colours and highlight, the card made of them, and small
/// pictures of it. What it is made on outlives it. Main thread only.
class ShareImageWindow {
public:
    /// So many previews stand side by side.
    static constexpr std::size_t previewsInRow = 5;

    /// What the main screen hands in.
    struct Inputs {
        std::vector<TimelineRecordSnapshot> records;
        double totalHours = 0;
        std::vector<AppStat> appStats;
        Date date;  ///< of the day that is shown
        std::optional<SupportedLanguage> preferredLanguage{};
        std::optional<std::string> initialPraiseMessage{};  ///< with the next one: the sentence on the main screen
        std::optional<PraiseMessage> initialPraiseMessageData{};
        std::optional<std::string> initialPraiseReason{};
        std::function<void()> dismissed;  ///< called once when the window closes; may be empty
    };

    using Image = std::shared_ptr<const ShareImage>;
    /// Renders a card, or a smaller picture of it (scale below 1); see `ShareImageGenerator`.
    using ImageGenerator = std::function<std::optional<ShareImage>(const ShareImageConfig& config, double scale)>;

    /// Previews are rendered in `previewScale` (0 to 1) of the card.
    ShareImageWindow(Inputs inputs, ImageGenerator imageGenerator, double previewScale, platform::RunLoop& runLoop,
                     ConsoleSink& console, RandomWords random = secureRandomWord);
    ShareImageWindow(const ShareImageWindow&) = delete;
    ShareImageWindow& operator=(const ShareImageWindow&) = delete;

    /// Renders one of the pictures that are missing, the card before the previews. False if none is.
    bool renderNext();
    /// Renders the card again.
    void generateImage();
    /// Another sentence, not the same again, and the card with it.
    void shuffle();
    void close();

    // A change of these brings another card at once; the previews follow with `renderNext`.
    void setSelectedStyle(CardStyle style);
    void setSelectedColorScheme(ColorScheme scheme);
    void setShowTimeDistribution(bool isShown);
    void setForceShowAppChart(bool isForced);
    /// Highlights the application with this key; none highlights none.
    void setSelectedAppKey(const std::optional<std::string>& key);
    /// The switch of the highlight: on, it is the application with the most hours.
    void setHighlighting(bool isHighlighting);

    /// Asks for the desktop's ways to share the card; nothing without one.
    void share();
    void endSharing() { showingShareSheet_ = false; }
    /// What a file with the card is called if nobody says otherwise.
    [[nodiscard]] std::string suggestedFileName(const Localization& localization) const;
    /// What stands in the card's place while there is none.
    [[nodiscard]] std::string placeholder(const Localization& localization) const;

    [[nodiscard]] bool isPresented() const { return isPresented_; }
    [[nodiscard]] CardStyle selectedStyle() const { return selectedStyle_; }
    [[nodiscard]] ColorScheme selectedColorScheme() const { return selectedColorScheme_; }
    [[nodiscard]] bool showTimeDistribution() const { return showTimeDistribution_; }
    [[nodiscard]] bool forceShowAppChart() const { return forceShowAppChart_; }
    [[nodiscard]] const std::optional<std::string>& selectedAppKey() const { return selectedAppKey_; }
    [[nodiscard]] bool showingShareSheet() const { return showingShareSheet_; }
    [[nodiscard]] const std::string& currentPraiseMessage() const { return currentPraiseMessage_; }
    [[nodiscard]] const std::optional<std::string>& currentPraiseReason() const { return currentPraiseReason_; }
    [[nodiscard]] const std::optional<PraiseMessage>& currentPraiseMessageData() const {
        return currentPraiseMessageData_;
    }
    [[nodiscard]] const std::optional<std::string>& lastPraiseMessageId() const { return lastPraiseMessageId_; }
    /// The applications in the colours of the scheme.
    [[nodiscard]] const std::vector<AppStat>& workingAppStats() const { return workingAppStats_; }
    /// The same in rows of the carousel.
    [[nodiscard]] std::vector<std::vector<AppStat>> groupedPreviews() const;
    /// None until it has been rendered.
    [[nodiscard]] const Image& generatedImage() const { return generatedImage_; }
    /// The card with each application highlighted, by its key; those that have been rendered.
    [[nodiscard]] const std::map<std::string, Image>& previewImages() const { return previewImages_; }
    /// The card in each style; those that have been rendered.
    [[nodiscard]] const std::map<CardStyle, Image>& styleImages() const { return styleImages_; }
    /// What the card shows now.
    [[nodiscard]] ShareImageConfig config() const;

    /// Sent after a choice, a picture or the sentence has changed.
    Signal<> changed;

private:
    void openWithSentence();
    void generatePraise();
    void regenerate(bool alsoStyles);
    [[nodiscard]] ShareImageConfig config(CardStyle style, const std::optional<std::string>& key) const;
    [[nodiscard]] Image rendered(const ShareImageConfig& config, double scale) const;

    Inputs inputs_;
    ImageGenerator imageGenerator_;
    double previewScale_;
    platform::RunLoop& runLoop_;
    ConsoleSink& console_;
    RandomWords random_;
    bool isPresented_ = true;
    CardStyle selectedStyle_ = CardStyle::clean;
    ColorScheme selectedColorScheme_ = ColorScheme::ocean;
    bool showTimeDistribution_ = false;
    bool forceShowAppChart_ = false;
    bool showingShareSheet_ = false;
    bool hasTried_ = false;
    std::optional<std::string> selectedAppKey_;
    std::string currentPraiseMessage_;
    std::optional<std::string> currentPraiseReason_;
    std::optional<PraiseMessage> currentPraiseMessageData_;
    std::optional<std::string> lastPraiseMessageId_;
    std::vector<AppStat> workingAppStats_;
    Image generatedImage_;
    std::map<std::string, Image> previewImages_;
    std::map<CardStyle, Image> styleImages_;
};

class PraiseMessageView;

/// What the card beside the timeline hands in for the day of `date`. It is told when the window closes and has to
/// outlive it.
[[nodiscard]] ShareImageWindow::Inputs shareImageInputs(PraiseMessageView& praise, Date date);

}  // namespace quorvane
