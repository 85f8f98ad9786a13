#include "cli/CliFixture.h"

namespace quorvane {
namespace {

using CategoriesCommandTest = CliTest;

TEST_F(CategoriesCommandTest, KeepsCategoriesOfYourOwnInTheConfiguration) {
    const std::string builtIn =
        "Work\nLearning\nEntertainment\nExercise\nSocial\nRest\nTravel\nShopping\nOther\nIdle\n";
    EXPECT_EQ(outputOf({"categories", "list"}), builtIn);
    EXPECT_EQ(outputOf({"categories", "add", "Writing"}), "");
    EXPECT_EQ(outputOf({"categories", "add", "  Deep \"Work\"\n"}), "");
    EXPECT_EQ(outputOf({"categories", "list"}), builtIn + "Deep \"Work\"\nWriting\n");
    EXPECT_EQ(outputOf({"--json", "categories", "list"}),
              "[\"工作\",\"学习\",\"娱乐\",\"运动\",\"社交\",\"休息\",\"出行\",\"购物\",\"其他\",\"空闲\","
              "\"Deep \\\"Work\\\"\",\"Writing\"]\n");
    EXPECT_EQ(outputOf({"categories", "remove", "Writing"}), "");
    EXPECT_EQ(outputOf({"categories", "list"}), builtIn + "Deep \"Work\"\n");
    EXPECT_THAT(names(), ElementsAre(".config")) << "no store is needed";
}

TEST_F(CategoriesCommandTest, WhatIsThereAlreadyIsDoneAndWhatIsNotThereIsRefused) {
    EXPECT_EQ(outputOf({"categories", "add", "Writing"}), "");
    expectRefusal({"categories", "add", " Writing"}, 0, "Writing is there already");
    expectRefusal({"categories", "add", " \n"}, 1, "the name can't be empty");
    expectRefusal({"categories", "remove", "Reading"}, 1, "there is no category Reading of your own");
    expectRefusal({"categories", "remove", "工作"}, 1, "there is no category 工作 of your own");
    setting_.environment["LANGUAGE"] = "zh";
    EXPECT_THAT(outputOf({"categories", "list"}), EndsWith("空闲\nWriting\n"));
}

TEST_F(CategoriesCommandTest, SaysThatTheConfigurationCanNotBeWritten) {
    writeFile(folder_ / ".config", "in the way");
    expectRefusal({"categories", "add", "Writing"}, 1, "could not be written");
}

}  // namespace
}  // namespace quorvane
