#include "shell/praise/ShareImageSheet.h"

#include "platform/simulated/SimulatedRunLoop.h"
#include "shell/cards/SampleCards.h"
#include "shell/cards/ShareImageGenerator.h"
#include "shell/look/Controls.h"
#include "shell/look/Sheet.h"
#include "shell/praise/CardChoices.h"
#include "shell/praise/PraiseCard.h"
#include "shell/praise/PreviewTile.h"
#include "shell/support/Offscreen.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"
#include "support/TemporaryFolder.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QElapsedTimer>
#include <QImage>
#include <algorithm>

namespace quorvane {
namespace {

constexpr auto afternoon = 1772636400.0;  // 2026-03-04T15:00:00Z

/// A base, as the members of the test are widgets and need the application.
class OffscreenTest : public testing::Test {
protected:
    OffscreenTest() { needApplication(); }
};

class ShareImageSheetTest : public OffscreenTest {
protected:
    ShareImageSheetTest() {
        window_.resize(1280, 832);
        window_.show();
        const ShareImageChoice sample = sampleCard("rich").choice;
        sheet_ = &ShareImageSheet::open(
            window_,
            {.totalHours = sample.totalHours,
             .appStats = sample.appStats,
             .date = sample.date,
             .initialPraiseMessage = sample.message,
             .initialPraiseMessageData = PraiseMessage{.id = "creat_001"},
             .initialPraiseReason = sample.reason,
             .dismissed = [this] { isDismissed_ = true; }},
            {.runLoop = runLoop_,
             .console = console_,
             .localization = english_,
             .chooseFile = [this](QWidget&, const SaveDialog::Content& content, const auto& chosen) {
                 proposed_ = content.fileName.toStdString();
                 chosen(file_);
             }});
    }

    [[nodiscard]] std::size_t generated() const {
        return static_cast<std::size_t>(std::ranges::count_if(
            console_.lines(), [](const std::string& line) { return line.starts_with("🖼️ Generating image"); }));
    }
    /// Lets the pictures be rendered; false if that takes longer than 20 s.
    [[nodiscard]] bool hasAllPictures() {
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < 20000) {
            QApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
            const auto tiles = sheet_->findChildren<QAbstractButton*>();
            const bool isDone = std::ranges::all_of(tiles, [](auto* widget) {
                auto* const tile = dynamic_cast<PreviewTile*>(widget);
                return tile == nullptr || !tile->isVisible() || tile->hasImage();
            });
            if (isDone) return true;
        }
        return false;
    }

    platform::SimulatedRunLoop runLoop_{dateFromSecondsSince1970(afternoon)};
    RecordingConsole console_;
    const Localization english_{"en"};
    TemporaryFolder folder_;
    std::filesystem::path file_ = folder_ / "card.png";
    std::string proposed_;
    bool isDismissed_ = false;
    QWidget window_;
    Sheet* sheet_ = nullptr;
};

TEST_F(ShareImageSheetTest, StyleSchemeAndSwitchesMakeAnotherCard) {
    ASSERT_TRUE(hasAllPictures());
    buttonCalled(*sheet_, "Luxury").click();
    buttonCalled(*sheet_, "Forest").click();
    EXPECT_THAT(accessibleNames(window_, QAccessible::Graphic),
                Contains("Share card preview, style Luxury, colors Forest"));
    buttonCalled(*sheet_, "Show shares of the day").click();
    EXPECT_THAT(console_.lines().back(), HasSubstr("showTimeDistribution: true"));
    auto& highlight = buttonCalled(*sheet_, "Highlight an app");
    EXPECT_FALSE(highlight.isChecked());
    buttonCalled(*sheet_, "Card that highlights Firefox").click();
    EXPECT_TRUE(highlight.isChecked());
    highlight.click();
    EXPECT_FALSE(buttonCalled(*sheet_, "Card that highlights Firefox").isChecked());
    EXPECT_EQ(generated(), 6U);
}

TEST_F(ShareImageSheetTest, ThePicturesComeByAndByAndTheCardIsSavedAndShared) {
    auto& save = buttonCalled(*sheet_, "Save Image");
    EXPECT_FALSE(save.isEnabled());
    ASSERT_TRUE(hasAllPictures());
    EXPECT_EQ(generated(), 1U);
    EXPECT_THAT(accessibleNames(window_, QAccessible::Graphic),
                Contains("Share card preview, style Clean, colors Ocean"));

    save.click();
    EXPECT_THAT(proposed_, StartsWith("Quorvane_Day_2026-03-04_"));
    EXPECT_EQ(QImage(QString::fromStdString(file_.string())).size(), QSize(600, 900));
    buttonCalled(*sheet_, "Share").click();
    EXPECT_EQ(QGuiApplication::clipboard()->image().size(), QSize(600, 900));

    const auto highlights = [this] { return accessibleNames(window_, QAccessible::RadioButton); };
    EXPECT_THAT(highlights(), Contains("Card that highlights Figma"));
    EXPECT_FALSE(buttonCalled(*sheet_, "Previous previews").isEnabled());
    buttonCalled(*sheet_, "Next previews").click();
    QApplication::processEvents();
    EXPECT_THAT(highlights(), Contains("Card that highlights 微信"));
    EXPECT_TRUE(buttonCalled(*sheet_, "Previous previews").isEnabled());

    file_ = folder_ / "missing" / "card.png";
    save.click();
    EXPECT_THAT(accessibleNames(window_, QAccessible::Dialog), Contains("The image could not be saved"));
}

TEST_F(ShareImageSheetTest, FitsIntoSmallWindowsAndTellsThatItCloses) {
    for (const QSize size : {QSize(900, 640), QSize(480, 420)}) {
        window_.resize(size);
        QApplication::processEvents();
        EXPECT_TRUE(window_.rect().contains(sheet_->panel()));
        EXPECT_TRUE(buttonCalled(*sheet_, "Save Image").isVisible());
    }
    sheet_->close();
    EXPECT_TRUE(isDismissed_);
}

TEST(PraiseCardTest, ShowsTheSentenceAndHandsItToTheShareWindow) {
    needApplication();
    platform::SimulatedRunLoop runLoop(dateFromSecondsSince1970(afternoon));
    const Localization english("en");
    PraiseMessageView state(runLoop, [next = std::uint64_t{1} << 40]() mutable { return next++; });
    QWidget window;
    auto* const card = new PraiseCard(state, english, &window);
    window.show();
    int wanted = 0;
    const auto listening = card->shareWanted.subscribe([&] { ++wanted; });
    state.setTotalHours(6);
    state.setLocalizedLanguage(SupportedLanguage::english);
    EXPECT_THAT(accessibleNames(window, QAccessible::StaticText), Contains(state.currentMessage()));
    const std::string first = state.currentMessage();
    buttonCalled(*card, "Another Message").click();
    EXPECT_NE(state.currentMessage(), first);
    auto& language = widgetBelow<QComboBox>(*card);
    language.setCurrentIndex(3);
    Q_EMIT language.activated(3);
    EXPECT_EQ(state.localizedLanguage(), SupportedLanguage::french);
    for (const auto form : {PraiseCard::Form::compact, PraiseCard::Form::line, PraiseCard::Form::full}) {
        card->setForm(form);
        EXPECT_EQ(language.isVisible(), form == PraiseCard::Form::full);
    }
    buttonCalled(*card, "Create Share Card").click();
    EXPECT_EQ(wanted, 1);
    EXPECT_TRUE(state.showingShareWindow());
    auto inputs = shareImageInputs(state, runLoop.now());
    EXPECT_EQ(inputs.initialPraiseMessage, state.currentMessage());
    EXPECT_EQ(inputs.preferredLanguage, SupportedLanguage::french);
    inputs.dismissed();
    EXPECT_FALSE(state.showingShareWindow());
}

}  // namespace
}  // namespace quorvane
