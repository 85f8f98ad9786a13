#include "cli/CliFixture.h"

#include <cstdlib>
#include <fmt/format.h>

namespace quorvane {

CliTest::CliTest() {
    setting_.folder = folder_.path();
    setting_.environment = {
        {"HOME", folder_.path().string()}, {"TZ", "UTC"}, {"LC_ALL", "en_US.UTF-8"}, {"PATH", "/usr/bin:/bin"}};
    // Where the sanitizers look for their options.
    for (const char* name : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"})
        if (const char* value = std::getenv(name)) setting_.environment[name] = value;
}

ProgramResult CliTest::runBare(const Arguments& arguments) {
    return ProgramRun(QUORVANE_CLI, arguments, setting_).wait();
}

ProgramResult CliTest::run(const Arguments& arguments) {
    Arguments all{"--store", store().string()};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return runBare(all);
}

std::string CliTest::outputOf(const Arguments& arguments) {
    const auto result = run(arguments);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    return result.out;
}

void CliTest::expectOutput(const Arguments& arguments, const std::string& file) {
    EXPECT_EQ(outputOf(arguments), contentOf(QUORVANE_CLI_DATA "/" + file)) << file;
}

void CliTest::expectRefusal(const Arguments& arguments, int status, const std::string& cause) {
    EXPECT_THAT(run(arguments), isRefused(status, HasSubstr(cause))) << testing::PrintToString(arguments);
}

void CliTest::load(const std::string& lines) {
    setting_.input = lines;
    const auto result = run({"load", "-"});
    ASSERT_EQ(result.status, 0) << result.err;
    setting_.input.clear();
}

std::set<std::string> CliTest::names() const {
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path()))
        found.insert(entry.path().filename());
    return found;
}

testing::Matcher<std::string> isRefusal(const testing::Matcher<std::string>& cause) {
    return AllOf(
        StartsWith("quorvane-cli: "), EndsWith("\n"),
        testing::ResultOf([](const std::string& text) { return std::count(text.begin(), text.end(), '\n'); }, 1),
        cause);
}

testing::Matcher<ProgramResult> isRefused(const testing::Matcher<int>& status,
                                          const testing::Matcher<std::string>& cause) {
    return AllOf(testing::Field(&ProgramResult::status, status), testing::Field(&ProgramResult::out, ""),
                 testing::Field(&ProgramResult::err, isRefusal(cause)));
}

std::string recordLine(const std::string& id, const std::string& start, const std::string& end,
                       const std::string& more) {
    return fmt::format(
        R"({{"entity":"ActivityRecord","id":"{}0000000-0000-4000-8000-000000000000","start_time":"{}","end_time":{},)"
        R"("created_at":"{}","updated_at":"{}"{}}})"
        "\n",
        id, start, end.empty() ? "null" : '"' + end + '"', start, end.empty() ? start : end, more);
}

}  // namespace quorvane
