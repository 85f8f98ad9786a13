#include "cli/CliFixture.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace quorvane {
namespace {

using CategoriesCommandTest = CliTest;

TEST_F(CategoriesCommandTest, KeepsCategoriesOfYourOwnInTheConfiguration) {
    const std::string builtIn = "工作\n学习\n娱乐\n运动\n社交\n休息\n出行\n购物\n其他\n空闲\n";
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
    const auto again = run({"categories", "add", " Writing"});
    EXPECT_EQ(again.status, 0);
    EXPECT_THAT(again.err, isRefusal(HasSubstr("Writing is there already")));
    struct Row {
        Arguments arguments;
        const char* cause;
    };
    const Row rows[] = {{{"categories", "add", " \n"}, "the name can't be empty"},
                        {{"categories", "remove", "Reading"}, "there is no category Reading of your own"},
                        {{"categories", "remove", "工作"}, "there is no category 工作 of your own"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.cause);
        const auto result = run(row.arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, isRefusal(HasSubstr(row.cause)));
    }
    EXPECT_THAT(outputOf({"categories", "list"}), testing::EndsWith("空闲\nWriting\n"));
}

TEST_F(CategoriesCommandTest, SaysThatTheConfigurationCanNotBeWritten) {
    writeFile(folder_ / ".config", "in the way");
    const auto result = run({"categories", "add", "Writing"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, isRefusal(HasSubstr("could not be written")));
}

}  // namespace
}  // namespace quorvane
