#include "cli/CliFixture.h"

#include "base/Json.h"
#include "platform/linux/process/ProcessLock.h"
#include "session/TrackerLock.h"

namespace quorvane {
namespace {

using DoctorCommandTest = CliTest;

TEST_F(DoctorCommandTest, SaysOfEveryQuestionWhoAnswersOrWhyNobodyDoes) {
    const auto found = parseJson(outputOf({"--json", "doctor"}));
    ASSERT_TRUE(found);
    EXPECT_GE((*found)["channels"].size(), 5U);
    for (const Json& channel : (*found)["channels"]) {
        SCOPED_TRACE(channel.dump());
        EXPECT_FALSE(channel["question"].get<std::string>().empty());
        EXPECT_EQ(channel["available"].get<bool>(), channel["reason"].is_null());
    }
    // There is no display here.
    EXPECT_FALSE((*found)["channels"][0]["available"].get<bool>());
    EXPECT_EQ((*found)["capture"]["sees"], "nothing");
    EXPECT_EQ((*found)["capture"]["reason"], (*found)["channels"][0]["reason"]);
}

TEST_F(DoctorCommandTest, LooksAtTheStoreAndItsTrackerWithoutMakingOne) {
    auto found = parseJson(outputOf({"--json", "doctor"})).value_or(Json());
    EXPECT_FALSE(found["store"]["opens"].get<bool>());
    EXPECT_THAT(found["store"]["problem"].get<std::string>(), HasSubstr("there is no such store"));
    EXPECT_TRUE(found["tracker"].is_null());
    EXPECT_THAT(names(), IsEmpty());

    load("");
    const auto lock = platform::ProcessLock::tryAcquire(trackerLockFile(store()), "quorvane");
    found = parseJson(outputOf({"--json", "doctor"})).value_or(Json());
    EXPECT_TRUE(found["store"]["opens"].get<bool>());
    EXPECT_EQ(found["tracker"]["program"], "quorvane");
    EXPECT_THAT(outputOf({"doctor"}), AllOf(HasSubstr(": opens\n"), HasSubstr("quorvane (process ")));
}

}  // namespace
}  // namespace quorvane
