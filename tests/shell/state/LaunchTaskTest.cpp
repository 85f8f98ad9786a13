#include "shell/state/LaunchTask.h"

#include "platform/simulated/SimulatedRunLoop.h"
#include "store/AppSettings.h"
#include "store/Database.h"
#include "support/Builders.h"
#include "support/RecordingConsole.h"
#include "support/TemporaryStore.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace quorvane {
namespace {

class LaunchTaskTest : public testing::Test {
protected:
    LaunchTaskTest() {
        hooks_.applyDockVisibility = [this](bool hide) { note(fmt::format("hide {}", hide)); };
        hooks_.startMemoryMonitor = [this](Seconds interval) { note(fmt::format("monitor {}", interval.count())); };
    }

    void note(const std::string& what) {
        events_.push_back(fmt::format("{}: {}", (runLoop_.now() - at("09:00:00")).count(), what));
    }

    void run() { LaunchTask(store_.context(), runLoop_, console_, hooks_).run(); }

    TemporaryStore store_;
    platform::SimulatedRunLoop runLoop_{at("09:00:00")};
    RecordingConsole console_;
    LaunchHooks hooks_;
    std::vector<std::string> events_;
};

TEST_F(LaunchTaskTest, AppliesTheDockSettingAtOnceAndStartsTheRestLaterAndOnce) {
    const auto settings = std::make_shared<AppSettings>();
    settings->hideDockIcon = true;
    store_.context().insert(settings);
    hooks_.isCloudAvailable = [this] {
        note("cloud");
        return false;
    };
    LaunchTask task(store_.context(), runLoop_, console_, hooks_);
    task.run();
    task.run();
    runLoop_.playFor(60s);
    EXPECT_THAT(events_, ElementsAre("0: hide true", "1: monitor 30", "3: cloud"));
}

TEST_F(LaunchTaskTest, ShowsTheDockIconWithoutASettingAndWhereItCannotBeRead) {
    run();
    EXPECT_THAT(console_.lines(), IsEmpty());
    Database other({.file = store_.file()});
    other.execute("ALTER TABLE " + AppSettings::description().table + " RENAME TO elsewhere");
    run();
    EXPECT_THAT(events_, ElementsAre("0: hide false", "0: hide false"));
    EXPECT_THAT(console_.lines(),
                ElementsAre(testing::StartsWith("⚠️ 读取 Dock 显示偏好失败，按默认显示 Dock：")));
}

TEST_F(LaunchTaskTest, SyncsOnceWhereThereIsACloudAndSaysHowItWent) {
    const std::string begin = "🔄 开始检查 CloudKit 同步...";
    const std::string full = "🚀 开始执行完整同步...";
    const struct {
        const char* name;
        std::function<bool()> isCloudAvailable;
        std::optional<std::string> error;
        std::vector<std::string> lines;
    } rows[] = {
        {"no cloud at all", {}, {}, {begin, "📱 CloudKit 可用性: false", "⚠️ CloudKit 不可用，跳过同步"}},
        {"unavailable",
         [] { return false; },
         {},
         {begin, "📱 CloudKit 可用性: false", "⚠️ CloudKit 不可用，跳过同步"}},
        {"synced", [] { return true; }, {}, {begin, "📱 CloudKit 可用性: true", full, "✅ CloudKit 同步完成"}},
        {"failed",
         [] { return true; },
         "no network",
         {begin, "📱 CloudKit 可用性: true", full, "❌ CloudKit同步失败: no network"}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        console_.clear();
        hooks_.isCloudAvailable = row.isCloudAvailable;
        hooks_.performFullSync = [&](ModelContext&, const LaunchHooks::SyncFinished& finished) { finished(row.error); };
        LaunchTask task(store_.context(), runLoop_, console_, hooks_);
        task.run();
        runLoop_.playFor(60s);
        EXPECT_EQ(console_.lines(), row.lines);
    }
}

TEST_F(LaunchTaskTest, WhatIsDueEndsWithIt) {
    run();
    runLoop_.playFor(60s);
    EXPECT_THAT(events_, ElementsAre("0: hide false"));
    EXPECT_THAT(console_.lines(), IsEmpty());
}

}  // namespace
}  // namespace quorvane
