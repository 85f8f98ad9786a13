#include "cli/CliFixture.h"

namespace quorvane {
namespace {

/// The first bytes of a PNG file of 600 by 900 pixels.
const std::string cardHead("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\x02\x58\0\0\x03\x84", 24);

class CardCommandTest : public CliTest {
protected:
    CardCommandTest() {
        load(recordLine("A", "2026-03-04T09:00:00Z", "2026-03-04T11:30:00Z", R"(,"app_name":"Figma\u001b[2J")") +
             recordLine("B", "2026-03-04T23:00:00Z", "", R"(,"app_name":"微信")"));
    }
};

TEST_F(CardCommandTest, WritesThePictureOfADayWithoutADisplay) {
    EXPECT_EQ(outputOf({"card", "--date", "2026-03-04", "--now", "2026-03-04T23:30:00Z", "--style", "luxury",
                        "--scheme", "purple", "--distribution", "-o", "day.png"}),
              "");
    EXPECT_THAT(contentOf(folder_ / "day.png"), StartsWith(cardHead));
}

TEST_F(CardCommandTest, ADayWithoutRecordsHasACardTooAndAPipeTakesIt) {
    EXPECT_THAT(outputOf({"card", "--date", "2020-01-01", "-o", "-"}), StartsWith(cardHead));
}

TEST_F(CardCommandTest, WrongUsageNamesWhatIsAllowedAndWritesNothing) {
    expectRefusal({"card"}, 2, "-o");
    expectRefusal({"card", "-o", "a.png", "--style", "Clean"}, 2, "clean, elegantShadow, glassmorphism");
    expectRefusal({"card", "-o", "a.png", "--scheme", "pink"}, 2, "vibrant, pastel, ocean");
    expectRefusal({"card", "-o", "a.png", "--date", "yesterday"}, 2, "is no day like 2026-03-04");
    EXPECT_FALSE(names().contains("a.png"));
}

TEST_F(CardCommandTest, WhatCannotBeWrittenIsAFailure) {
    expectRefusal({"card", "-o", "missing/a.png"}, 1, "missing/a.png");
    expectRefusal({"card", "-o", store().string()}, 1, "this is the store itself");
}

TEST_F(CardCommandTest, AFailureOfThePainterIsToldAndLeavesTheOldFile) {
    writeFile(folder_ / "day.png", "old");
    // Painting needs a file for what goes to the painter and back; this folder isn't there.
    setting_.environment["TMPDIR"] = (folder_ / "gone").string();
    expectRefusal({"card", "-o", "day.png"}, 1, "cannot paint the card");
    EXPECT_EQ(contentOf(folder_ / "day.png"), "old");
}

}  // namespace
}  // namespace quorvane
