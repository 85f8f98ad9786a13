#include "praise/PraiseTexts.h"

#include "praise/PraiseMessageTable.h"
#include "support/Builders.h"

#include <gmock/gmock.h>

namespace quorvane {
namespace {

using enum SupportedLanguage;
using PraiseMessageDatabase::formatMessage;
using PraiseMessageDatabase::formatReason;

TEST(PraiseTextsTest, HoursHaveADecimalBelowTenAndBecomeMinutesBelowATenth) {
    const std::pair<double, const char*> rows[] = {
        {-3, "0分钟"}, {0, "0分钟"},      {0.016, "0分钟"}, {0.05, "3分钟"}, {0.0999, "5分钟"}, {0.1, "0.1"},
        {0.96, "1.0"}, {9.949999, "9.9"}, {9.96, "10.0"},   {10, "10"},      {12.4, "12"},      {23.6, "24"},
    };
    for (const auto& [hours, expected] : rows)
        EXPECT_EQ(PraiseMessageDatabase::hoursText(hours, chinese), expected) << hours;
    EXPECT_EQ(PraiseMessageDatabase::hoursText(1 / 60.0, english), "1 minute");
}

TEST(PraiseTextsTest, MessagesFillEveryPlaceholderInALanguageThatTheyHave) {
    const MultilingualPraiseMessage both{
        .id = "both", .messages = {{chinese, "{hours}小时，{hours}！"}, {english, "{hours} hours, {hours}!"}}};
    const MultilingualPraiseMessage chineseAlone{.id = "chinese", .messages = {{chinese, "{hours}小时"}}};
    EXPECT_EQ(formatMessage(both, {english}, 2), "2.0 hours, 2.0!");
    EXPECT_EQ(formatMessage(both, {english, chinese}, 2), "2.0小时，2.0！");
    EXPECT_EQ(formatMessage(both, {chinese}, 0.05), "3分钟小时，3分钟！");
    EXPECT_EQ(formatMessage(both, {english, german}, 0.05), "3 minutes, 3 minutes!");
    EXPECT_EQ(formatMessage(chineseAlone, {english, german}, 2), "2.0小时");
    EXPECT_EQ(formatMessage({.id = "empty"}, {english}, 0.05), "You put in 3 minutes today. Keep it up!");
    EXPECT_EQ(formatMessage({.id = "empty"}, {chinese}, 12.4), "你今天努力了12小时，继续保持！");
}

TEST(PraiseTextsTest, AnApplicationIsKnownByItsNameOrInLowerCaseByItsBundleIdentifier) {
    const auto isSlack = [](std::optional<std::string> name, std::optional<std::string> bundleId) {
        return PraiseMessageDatabase::matches({.bundleId = std::move(bundleId), .appName = std::move(name)}, "Slack");
    };
    EXPECT_TRUE(isSlack("Slack", {}));
    EXPECT_TRUE(isSlack("Slack (Beta)", {}));
    EXPECT_TRUE(isSlack({}, "com.example.slack.desktop"));
    EXPECT_FALSE(isSlack("slack", {}));
    EXPECT_FALSE(isSlack({}, "com.example.Slack"));
    EXPECT_FALSE(isSlack("Editor", "org.example.editor"));
    EXPECT_FALSE(isSlack({}, {}));
}

class PraiseReasonTest : public testing::Test {
protected:
    void add(std::string_view from, std::optional<std::string_view> to, std::optional<std::string> name,
             const std::string& bundleId = "org.example.app") {
        records_.push_back({.startTime = at(from),
                            .endTime = to ? std::optional(at(*to)) : std::nullopt,
                            .bundleId = bundleId,
                            .appName = std::move(name)});
    }

    [[nodiscard]] std::optional<std::string> reason(const PraiseLanguage& language = {chinese}) const {
        return formatReason(row_, {.records = records_, .hours = 6.04, .now = at("18:00:00")}, language);
    }

    MultilingualPraiseMessage row_ = PraiseMessageDatabase::table().front();
    std::vector<TimelineRecordSnapshot> records_;
};

TEST_F(PraiseReasonTest, TellsTheLongestRecordOfTheNamedApplicationsAlone) {
    add("09:00:00", "15:00:00", "Browser");
    add("15:00:00", "15:29:59", "Xcode");
    EXPECT_EQ(reason(), "你今天用Xcode编程了29分钟");
    add("16:00:00", "16:29:59", "IntelliJ IDEA");
    EXPECT_EQ(reason(), "你今天用Xcode编程了29分钟");  // as long as the first
    add("17:00:00", std::nullopt, "Visual Studio Code");
    EXPECT_EQ(reason(), "你今天用Visual Studio Code编程了1.0小时");
    add("07:00:00", "08:36:00", std::nullopt, "com.example.xcode");
    EXPECT_EQ(reason(), "你今天用未知应用编程了1.6小时");
    EXPECT_EQ(reason({german}), "Heute mit einer unbekannten App programmiert: 1.6 Stunden");
}

TEST_F(PraiseReasonTest, WithoutSuchARecordItTellsTheHoursOfTheDay) {
    EXPECT_EQ(reason(), "你今天用各种应用编程了6.0小时");
    add("09:00:00", "15:00:00", "Browser");
    EXPECT_EQ(reason(), "你今天用各种应用编程了6.0小时");
    add("15:00:00", "15:30:00", "Xcode");
    row_.appTypes.reset();
    EXPECT_EQ(reason({english}), "You coded with various apps for 6.0 hours today");
}

TEST_F(PraiseReasonTest, LooksForTheTemplateInTheSelectedLanguageAndThenInThreeMore) {
    const auto reasonIn = [&](PraiseTemplates templates) {
        row_.reasonTemplates = std::move(templates);
        return reason({.effective = french, .selected = german});
    };
    EXPECT_EQ(reasonIn({{english, "en"}, {chinese, "zh"}, {french, "fr"}, {german, "de"}}), "de");
    EXPECT_EQ(reasonIn({{english, "en"}, {chinese, "zh"}, {french, "fr"}}), "fr");
    EXPECT_EQ(reasonIn({{english, "en"}, {chinese, "zh"}}), "zh");
    EXPECT_EQ(reasonIn({{english, "{hours}, {hours} hours"}}), "6.0 hours, 6.0 hours");
    EXPECT_EQ(reasonIn({{japanese, "ja"}}), std::nullopt);
    EXPECT_EQ(reasonIn({}), std::nullopt);
    row_.reasonTemplates.reset();
    EXPECT_EQ(reason(), std::nullopt);
}

}  // namespace
}  // namespace quorvane
