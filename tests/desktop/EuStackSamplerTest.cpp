#include "platform/linux/process/EuStackSampler.h"

#include "support/Matching.h"
#include "support/TemporaryFolder.h"

#include <cstdarg>
#include <fmt/format.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

/// Who was allowed to trace this process, in their order; 0: nobody any more.
std::vector<unsigned long>& tracers() {
    static std::vector<unsigned long> all;
    return all;
}

}  // namespace

/// Stands in for the C library's in this program: kernels tell nobody what they were told.
extern "C" int prctl(int option, ...) noexcept {
    va_list arguments;
    va_start(arguments, option);
    const auto argument = va_arg(arguments, unsigned long);
    va_end(arguments);
    if (option == PR_SET_PTRACER) tracers().push_back(argument);
    return static_cast<int>(syscall(SYS_prctl, option, argument, 0, 0, 0));
}

namespace quorvane::platform {
namespace {

namespace fs = std::filesystem;

/// A tool that does what a line of shell says; `$4` is the process to look at.
class EuStackSamplerTest : public testing::Test {
protected:
    [[nodiscard]] EuStackSampler sampler(const std::string& script) {
        writeFile(folder / "tool", "#!/bin/sh\n" + script + "\n");
        fs::permissions(folder / "tool", fs::perms::owner_all);
        return EuStackSampler(folder / "tool");
    }

    /// A sampling under way; none, and a failure, if it could not begin.
    [[nodiscard]] std::unique_ptr<StackSampling> started(EuStackSampler sampler, int seconds) {
        auto result = sampler.start(seconds, output);
        if (const auto* problem = std::get_if<std::string>(&result)) ADD_FAILURE() << *problem;
        auto* const sampling = std::get_if<std::unique_ptr<StackSampling>>(&result);
        return sampling ? std::move(*sampling) : nullptr;
    }

    TemporaryFolder folder;
    fs::path output = folder / "stacks.txt";
};

TEST_F(EuStackSamplerTest, RunsTheToolEachHalfSecondOnThisProcessWithAnEmptyEnvironment) {
    const auto tool = sampler("echo \"$*; ${HOME:-homeless} $(cat /dev/stdin)\"; echo unheard >&2");
    EXPECT_TRUE(tool.isInstalled());
    const auto sampling = started(tool, 1);
    ASSERT_TRUE(sampling->hasEndedWithin(5s));
    EXPECT_EQ(sampling->exitStatus(), 0);
    const auto line = "-m -b -p " + std::to_string(getpid()) + "; homeless \n";
    EXPECT_EQ(contentOf(output), line + line);
    EXPECT_EQ(fs::status(output).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(EuStackSamplerTest, EachToolMayTraceThisProcessWhileItRunsAndNobodyMayAfterwards) {
    tracers().clear();
    const auto sampling = started(sampler("echo $$"), 1);
    EXPECT_EQ(tracers().size(), 1U);
    ASSERT_TRUE(sampling->hasEndedWithin(5s));
    ASSERT_EQ(tracers().size(), 4U);
    EXPECT_EQ(contentOf(output), fmt::format("{}\n{}\n", tracers()[0], tracers()[2]));
    EXPECT_EQ(tracers()[1], 0U);
    EXPECT_EQ(tracers()[3], 0U);
}

TEST_F(EuStackSamplerTest, StacksWithFramesMissingAreStacksAndTheFirstFailureIsTheLast) {
    const std::tuple<const char*, int, const char*> rows[] = {
        {"echo x; exit 1", 0, "x\nx\n"},
        {"echo x; exit 2", 2, "x\n"},
        {"echo x; kill -9 $$", 137, "x\n"},
        {"[ -e \"$0.second\" ] && exit 2; touch \"$0.second\"; echo x", 0, "x\n"},
    };
    for (const auto& [script, status, text] : rows) {
        SCOPED_TRACE(script);
        fs::remove(output);
        const auto sampling = started(sampler(script), 1);
        ASSERT_TRUE(sampling->hasEndedWithin(5s));
        EXPECT_EQ(sampling->exitStatus(), status);
        EXPECT_EQ(contentOf(output), text);
    }
}

TEST_F(EuStackSamplerTest, WhyItCannotBeginIsSaid) {
    EXPECT_FALSE(EuStackSampler("/nothing/eu-stack").isInstalled());
    const auto problem = [](auto result) {
        const auto* const text = std::get_if<std::string>(&result);
        return text ? *text : std::string("it began");
    };
    EXPECT_THAT(problem(EuStackSampler("/nothing/eu-stack").start(1, folder / "a")), HasSubstr("No such file"));
    writeFile(output, "");
    EXPECT_THAT(problem(EuStackSampler().start(1, output)), HasSubstr("exists"));
}

TEST_F(EuStackSamplerTest, AToolThatHangsIsNotWaitedForAndEndsWithItsSampling) {
    auto sampling = started(sampler("echo $$; exec sleep 1000"), 1);
    EXPECT_FALSE(sampling->hasEndedWithin(0.3s));
    const auto pid = contentOf(output);
    sampling->terminate();
    sampling.reset();
    EXPECT_FALSE(fs::exists("/proc/" + pid.substr(0, pid.find('\n'))));
}

}  // namespace
}  // namespace quorvane::platform
