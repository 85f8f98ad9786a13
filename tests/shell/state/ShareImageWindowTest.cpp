#include "shell/state/ShareImageWindow.h"

#include "base/Iso8601.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "praise/PraiseMessageTable.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"

#include <cstdlib>

namespace quorvane {
namespace {

class ShareImageWindowTest : public testing::Test {
protected:
    struct Rendering {
        ShareImageConfig config;
        double scale;
    };

    [[nodiscard]] ShareImageWindow::Inputs inputs(std::size_t applications) {
        ShareImageWindow::Inputs made{.totalHours = 7,
                                      .date = runLoop_.now(),
                                      .preferredLanguage = SupportedLanguage::english,
                                      .dismissed = [this] { ++dismissals_; }};
        for (std::size_t i = 0; i < applications; ++i)
            made.appStats.push_back({.id = Uuid({static_cast<std::uint8_t>(i + 1)}),
                                     .appName = "App",
                                     .hours = static_cast<double>(applications - i),
                                     .percentage = 10});
        return made;
    }
    [[nodiscard]] std::unique_ptr<ShareImageWindow> open(ShareImageWindow::Inputs given) {
        return std::make_unique<ShareImageWindow>(
            std::move(given),
            [this](const ShareImageConfig& config, double scale) -> std::optional<ShareImage> {
                renderings_.push_back({config, scale});
                if (!hasMemory_) return std::nullopt;
                return ShareImage{.width = 1, .height = 1, .pixels = {0xFF000000}};
            },
            0.5, runLoop_, console_, [next = std::uint64_t{1} << 40]() mutable { return next++; });
    }
    static void renderAll(ShareImageWindow& window) {
        while (window.renderNext()) {
        }
    }

    platform::SimulatedRunLoop runLoop_{dateFromSecondsSince1970(1772636400)};  // 2026-03-04T15:00:00Z
    RecordingConsole console_;
    std::vector<Rendering> renderings_;
    bool hasMemory_ = true;
    int dismissals_ = 0;
};

TEST_F(ShareImageWindowTest, KeepsTheSentenceThatWasReadOnTheMainScreen) {
    auto given = inputs(2);
    given.initialPraiseMessage = "Well done";
    given.initialPraiseReason = "Because";
    given.initialPraiseMessageData = PraiseMessage{.id = "work_001", .message = "Well done"};
    const auto window = open(given);
    window->generateImage();
    EXPECT_EQ(console_.lines().front(), "✅ 使用主界面选中的消息: Well done, totalHours: 7.0");
    EXPECT_EQ(renderings_.front().config.praiseMessage, "Well done");
    EXPECT_EQ(renderings_.front().config.praiseReason, "Because");
    EXPECT_EQ(window->lastPraiseMessageId(), "work_001");
}

TEST_F(ShareImageWindowTest, FindsASentenceWhereNoneWasHandedInAndAnotherWhenAsked) {
    auto half = inputs(0);
    half.initialPraiseMessage = "Well done";  // without its row it doesn't count
    const auto window = open(half);
    EXPECT_EQ(console_.lines().front(), "🔄 生成新的消息");
    const auto first = window->lastPraiseMessageId();
    EXPECT_FALSE(window->currentPraiseMessage().empty());
    window->shuffle();
    EXPECT_NE(window->lastPraiseMessageId(), first);
    EXPECT_EQ(renderings_.back().config.praiseMessage, window->currentPraiseMessage());
}

TEST_F(ShareImageWindowTest, RendersTheCardFirstAndThenOnePictureAtATime) {
    const auto window = open(inputs(3));
    EXPECT_THAT(renderings_, SizeIs(0));
    EXPECT_TRUE(window->renderNext());
    EXPECT_EQ(renderings_.back().scale, 1);
    EXPECT_NE(window->generatedImage(), nullptr);
    for (std::size_t i = 1; i <= 12; ++i) {
        EXPECT_TRUE(window->renderNext());
        EXPECT_THAT(window->styleImages(), SizeIs(i));
        EXPECT_EQ(renderings_.back().scale, 0.5);
    }
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_TRUE(window->renderNext());
        EXPECT_EQ(renderings_.back().config.highlightedAppKey, appKey(window->workingAppStats()[i]));
    }
    EXPECT_THAT(window->previewImages(), SizeIs(3));
    EXPECT_FALSE(window->renderNext());
}

TEST_F(ShareImageWindowTest, AChangeRendersTheCardAtOnceAndTheOthersByAndBy) {
    // How many are rendered, at once and later.
    const std::tuple<const char*, std::function<void(ShareImageWindow&)>, std::size_t> rows[] = {
        {"style", [](auto& window) { window.setSelectedStyle(CardStyle::luxury); }, 1 + 2},
        {"scheme", [](auto& window) { window.setSelectedColorScheme(ColorScheme::forest); }, 1 + 12 + 2},
        {"shares", [](auto& window) { window.setShowTimeDistribution(true); }, 1 + 12 + 2},
        {"application", [](auto& window) { window.setSelectedAppKey(appKey(window.workingAppStats()[1])); }, 1},
        {"again", [](auto& window) { window.generateImage(); }, 1},
        {"the same style", [](auto& window) { window.setSelectedStyle(CardStyle::clean); }, 0}};
    for (const auto& [name, change, rendered] : rows) {
        SCOPED_TRACE(name);
        const auto window = open(inputs(2));
        renderAll(*window);
        renderings_.clear();
        change(*window);
        EXPECT_EQ(renderings_.size(), rendered == 0 ? 0U : 1U);
        EXPECT_TRUE(renderings_.empty() || renderings_.front().config == window->config());
        renderAll(*window);
        EXPECT_EQ(renderings_.size(), rendered);
    }
}

TEST_F(ShareImageWindowTest, TheSwitchHighlightsTheApplicationWithTheMostHours) {
    auto given = inputs(3);
    given.appStats[1].hours = 9;
    const auto window = open(given);
    window->setHighlighting(true);
    EXPECT_EQ(window->selectedAppKey(), appKey(given.appStats[1]));
    EXPECT_EQ(window->config().topApp->id, given.appStats[1].id);
    window->setSelectedAppKey(appKey(given.appStats[2]));
    EXPECT_EQ(window->config().topApp->id, given.appStats[2].id);
    window->setHighlighting(false);
    EXPECT_EQ(window->config().highlightedAppKey, std::nullopt);
}

TEST_F(ShareImageWindowTest, PreviewsStandInRowsOfFive) {
    EXPECT_THAT(open(inputs(12))->groupedPreviews(), ElementsAre(SizeIs(5), SizeIs(5), SizeIs(2)));
    EXPECT_THAT(open(inputs(0))->groupedPreviews(), SizeIs(0));
}

TEST_F(ShareImageWindowTest, WithoutAPictureItSaysSoAndSharesNothing) {
    const Localization english("en");
    const auto window = open(inputs(1));
    EXPECT_EQ(window->placeholder(english), english.text("share_card_generating"));
    hasMemory_ = false;
    window->generateImage();
    window->share();
    EXPECT_EQ(window->placeholder(english), english.text("share_card_waiting_data"));
    EXPECT_FALSE(window->showingShareSheet());
    hasMemory_ = true;
    window->generateImage();
    window->share();
    EXPECT_TRUE(window->showingShareSheet());
}

}  // namespace
}  // namespace quorvane
