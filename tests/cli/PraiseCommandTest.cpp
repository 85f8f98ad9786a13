#include "cli/CliFixture.h"

namespace quorvane {
namespace {

class PraiseCommandTest : public CliTest {
protected:
    PraiseCommandTest() {
        load(recordLine("A", "2026-03-04T09:00:00Z", "2026-03-04T11:30:00Z", R"(,"app_name":"Figma\u001b[2J")") +
             recordLine("B", "2026-03-04T23:00:00Z", "", R"(,"app_name":"Figma")"));
    }
};

TEST_F(PraiseCommandTest, PrintsASentenceAboutTheDayAndWhy) {
    const Arguments german{"praise", "--date", "2026-03-04", "--now", "2026-03-04T23:30:00Z", "--language", "de"};
    EXPECT_EQ(outputOf(german), "Deine Ideen blühen wie ein Garten im Mai!\n"
                                "Heute mit Figma [2J gestaltet: 2.5 Stunden\n");
    Arguments humor = german;
    humor.insert(humor.end(), {"--category", "humor"});
    EXPECT_EQ(outputOf(humor), "Deine Tastatur füllt heimlich einen Urlaubsantrag aus!\n");
    humor.emplace_back("--json");
    EXPECT_EQ(outputOf(humor), R"({"id":"humor_001","category":"humor","language":"de",)"
                               R"("message":"Deine Tastatur füllt heimlich einen Urlaubsantrag aus!","reason":null})"
                               "\n");
}

TEST_F(PraiseCommandTest, TellsTheHoursOfTheDayOpenRecordsUntilNow) {
    const auto at = [&](const char* now) {
        return outputOf({"praise", "--language", "ar", "--category", "comparison", "--now", now});
    };
    EXPECT_EQ(at("2026-03-04T23:30:00Z"), "ساعات اليوم: 3.0، وكل دقيقة تبني مستقبلك!\n");
    EXPECT_EQ(at("2026-03-05T00:30:00Z"), "ساعات اليوم: 0 دقيقة، وكل دقيقة تبني مستقبلك!\n");
    setting_.environment["TZ"] = "Asia/Shanghai";
    EXPECT_EQ(at("2026-03-05T11:00:00Z"), "ساعات اليوم: 12، وكل دقيقة تبني مستقبلك!\n");
}

TEST_F(PraiseCommandTest, SpeaksTheLanguageOfTheSettingsAndElseTheSystems) {
    const Arguments json{"praise", "--category", "comparison", "--json"};
    setting_.environment["LANGUAGE"] = "ko";
    EXPECT_THAT(outputOf(json), HasSubstr(R"("language":"ko")"));
    load(R"({"entity":"AppSettings","id":"C0FEA20C-DB32-40C6-A0CC-CF6118205BB6","preferred_language":"vi"})"
         "\n");
    EXPECT_THAT(outputOf(json), HasSubstr(R"("language":"vi")"));
}

}  // namespace
}  // namespace quorvane
