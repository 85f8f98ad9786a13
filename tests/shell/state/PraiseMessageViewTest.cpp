#include "shell/state/PraiseMessageView.h"

#include "platform/simulated/SimulatedRunLoop.h"
#include "praise/PraiseMessageTable.h"
#include "support/Builders.h"
#include "support/Matching.h"

namespace quorvane {
namespace {

using Records = std::vector<TimelineRecordSnapshot>;

class PraiseMessageViewTest : public testing::Test {
protected:
    /// So many records of different applications.
    static Records someRecords(int count) {
        Records records;
        for (int i = 0; i < count; ++i)
            records.push_back({.startTime = at("08:00:00") + i * 60s,
                               .endTime = at("08:00:30") + i * 60s,
                               .appName = "App " + std::to_string(i)});
        return records;
    }

    void countAt(std::string_view time, int records) {
        runLoop_.playUntil(time);
        view_.setRecords(someRecords(records));
    }

    platform::SimulatedRunLoop runLoop_{at("09:00:00")};
    std::uint64_t word_ = 1 << 20;  // draws the places of a pool one after the other
    PraiseMessageView view_{runLoop_, [this] { return word_++; }};
};

TEST_F(PraiseMessageViewTest, TheSentenceTheReasonAndTheRowBelongTogether) {
    EXPECT_EQ(view_.currentMessage(), "");
    view_.setTotalHours(3);
    view_.setRecords({{.startTime = at("08:00:00"), .bundleId = "com.apple.dt.xcode", .appName = "Xcode"}});
    view_.setLocalizedLanguage(SupportedLanguage::spanish);
    bool hasReason = false;
    for (int i = 0; i < 40; ++i) {
        const auto last = view_.lastMessageId();
        view_.generatePraise();
        const auto& data = view_.currentMessageData().value();
        EXPECT_EQ(data.id, view_.lastMessageId());
        EXPECT_NE(data.id, last);
        EXPECT_EQ(data.category, PraiseCategory::productivity);
        EXPECT_EQ(view_.currentReason().has_value(), data.reasonTemplate.has_value());
        EXPECT_TRUE(data.message.starts_with("¡{hours}") || view_.currentMessage() == data.message) << data.message;
        if (data.id == "prod_001") {
            hasReason = true;
            EXPECT_EQ(view_.currentReason(), "Hoy programaste con Xcode: 1.0 horas");
        }
    }
    EXPECT_TRUE(hasReason);
}

TEST_F(PraiseMessageViewTest, ASentenceComesWithTheCardAChoiceOrAWishAndNotWithTheData) {
    std::vector<std::string> sentences;
    const auto changed = view_.changed.subscribe([&] { sentences.push_back(view_.currentMessage()); });
    const auto settings = std::make_shared<AppSettings>();
    settings->preferredLanguage = "de";
    view_.setAppSettings(settings);
    view_.setTotalHours(6);
    EXPECT_THAT(sentences, IsEmpty());
    view_.setCurrentCategory(PraiseCategory::humor);
    view_.setLocalizedLanguage(SupportedLanguage::italian);
    view_.setLocalizedLanguage(std::nullopt);
    view_.appear();
    const std::string german = "Deine Tastatur füllt heimlich einen Urlaubsantrag aus!";
    EXPECT_THAT(sentences, ElementsAre(german, "La tua tastiera sta chiedendo le ferie di nascosto!", german, german));
    EXPECT_EQ(view_.currentMessageData()->message, german);
    view_.setCurrentCategory(PraiseCategory::humor);
    view_.setTotalHours(7);
    EXPECT_THAT(sentences, SizeIs(4));
    view_.setCurrentCategory(PraiseCategory::future);
    EXPECT_EQ(sentences.back(), "Du blickst weiter voraus als jede Sternwarte!");
    view_.setShowingShareWindow(true);
    EXPECT_TRUE(view_.showingShareWindow());
    EXPECT_EQ(view_.currentMessage(), sentences[4]);
}

TEST_F(PraiseMessageViewTest, TheMenusHaveAnAutomaticChoiceAndAllOthersInOrder) {
    const Localization english("en");
    const auto languages = PraiseMessageView::languages(english);
    ASSERT_THAT(languages, SizeIs(13));
    EXPECT_EQ(languages[0].text, "Automatic");
    EXPECT_EQ(languages[12].text, "العربية");
    EXPECT_EQ(languages[12].value, SupportedLanguage::arabic);
    const auto categories = PraiseMessageView::categories(english);
    ASSERT_THAT(categories, SizeIs(13));
    EXPECT_EQ(categories[0].value, std::nullopt);
    EXPECT_EQ(categories[12].text, "Entertainment");
}

TEST_F(PraiseMessageViewTest, StatisticsFollowTheFirstChangeAtOnceAndLaterOnesTwoSecondsAfterIt) {
    countAt("09:00:00", 1);
    EXPECT_THAT(view_.appStats(), SizeIs(1));
    countAt("09:00:00.5", 2);
    countAt("09:00:01.5", 3);
    EXPECT_THAT(view_.appStats(), SizeIs(1));
    EXPECT_EQ(runLoop_.pendingTimers(), 1);  // the first of the two has been cancelled
    runLoop_.playUntil("09:00:01.9");
    EXPECT_THAT(view_.appStats(), SizeIs(1));
    runLoop_.playUntil("09:00:02");
    EXPECT_THAT(view_.appStats(), SizeIs(3));
    // Only what was calculated at once begins an interval.
    EXPECT_EQ(view_.lastStatsCalculationTime(), at("09:00:00"));
    countAt("09:00:02.5", 4);
    EXPECT_THAT(view_.appStats(), SizeIs(4));
    EXPECT_EQ(view_.lastStatsCalculationTime(), at("09:00:02.5"));
}

TEST_F(PraiseMessageViewTest, RecordsThatAreTheSameCalculateNothing) {
    countAt("09:00:00", 2);
    int changes = 0;
    const auto changed = view_.changed.subscribe([&] { ++changes; });
    countAt("09:00:10", 2);
    EXPECT_EQ(changes, 0);
    countAt("09:00:10", 0);
    EXPECT_EQ(changes, 1);
    EXPECT_THAT(view_.appStats(), IsEmpty());
}

TEST_F(PraiseMessageViewTest, AClockThatWasSetBackHoldsNothingUp) {
    countAt("09:00:00", 1);
    runLoop_.setClock(at("08:00:00"));
    view_.setRecords(someRecords(2));
    EXPECT_THAT(view_.appStats(), SizeIs(2));
}

TEST_F(PraiseMessageViewTest, ACardThatIsGoneCalculatesNothing) {
    auto view = std::make_unique<PraiseMessageView>(runLoop_);
    view->setRecords(someRecords(1));
    view->setRecords(someRecords(2));
    view.reset();
    EXPECT_EQ(runLoop_.pendingTimers(), 0);
    runLoop_.playFor(3s);
}

}  // namespace
}  // namespace quorvane
