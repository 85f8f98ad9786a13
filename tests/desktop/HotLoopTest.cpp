#include "desktop/support/ChildProcess.h"
#include "desktop/support/Waiting.h"
#include "desktop/support/WebServer.h"
#include "diagnostics/performance/PackedBytes.h"
#include "diagnostics/performance/PerformanceReport.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/system/LinuxSystemInfo.h"
#include "support/Matching.h"

#include <fmt/format.h>
#include <unistd.h>

namespace quorvane {
namespace {

namespace fs = std::filesystem;

/// As somebody who may do nothing special, whoever runs the test; the program lies in the folder that is the home.
std::vector<std::string> asOrdinaryUser(const fs::path& folder, const std::string& host) {
    const auto program = folder / "quorvane_hot_loop";
    fs::copy_file(QUORVANE_HOT_LOOP, program);
    std::vector<std::string> command;
    if (::geteuid() == 0) {
        fs::permissions(folder, fs::perms::all);
        command = {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
    }
    command.insert(command.end(), {program, folder, host});
    return command;
}

TEST(HotLoopTest, AnOrdinaryUsersHotLoopIsCaughtByNameAndTheServerHearsOfItWithoutTheUser) {
    const platform::QtRunLoop loop;  // the test waits on it
    const WebServer server;
    server.publish("perf-reports", "202");
    const TemporaryFolder folder;
    writeFile(folder / "ca.pem", server.authority());
    const ChildProcess program(asOrdinaryUser(folder.path(), "localhost:" + server.port()));
    const auto log = [&] { return fs::exists(folder / "log") ? contentOf(folder / "log") : std::string(); };
    ASSERT_TRUE(waitUntil([&] { return log().find("delivered") != std::string::npos; }, 30s)) << log();
    EXPECT_THAT(log(), ContainsRegex("性能报告：CPU 持续 [0-9]+ 秒超过 30%（峰值 [0-9]+%），开始抓栈"));
    EXPECT_THAT(log(), Not(HasSubstr("退出码")));
    EXPECT_TRUE(fs::is_empty(folder / "spool"));

    const auto posted = server.posted("perf-reports");
    ASSERT_THAT(posted, SizeIs(1));
    const auto system = platform::linuxSystemInfo();
    EXPECT_EQ(posted.front().headers,
              fmt::format("Accept-Encoding: identity\nAccept-Language: *\nConnection: close\nContent-Encoding: gzip\n"
                          "Content-Length: {}\nContent-Type: application/json\n"
                          "User-Agent: Quorvane/1.2.0 (345; {} {}; {})",
                          posted.front().body.size(), system.name, system.version, system.architecture));
    const auto report = parsePerformanceReport(unpacked(posted.front().body));
    ASSERT_TRUE(report);
    EXPECT_GT(report->averageCPUPercent, 30);
    EXPECT_EQ(report->locale, "en-US");
    EXPECT_EQ(report->activeSurface, "quorvane.background");
    EXPECT_EQ(report->callStacksFormat, "linux-eu-stack-v1");
    EXPECT_THAT(report->callStacks, HasSubstr("quorvane::unmistakableHotLoop() - quorvane_hot_loop\n"));
    EXPECT_THAT(report->callStacks, Not(HasSubstr(" - /")));
    EXPECT_THAT(report->callStacks, Not(HasSubstr(folder.path().string())));
    std::size_t snapshots = 0;
    for (auto at = report->callStacks.find("PID "); at != std::string::npos;
         at = report->callStacks.find("PID ", at + 1))
        ++snapshots;
    EXPECT_EQ(snapshots, 4U) << "one each half second of two";
}

}  // namespace
}  // namespace quorvane
