#include "shell/state/LaunchTask.h"

#include "store/AppSettings.h"
#include "store/Database.h"
#include "support/StoreTest.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

class LaunchTaskTest : public StoreTest {
protected:
    LaunchTaskTest() {
        hooks_.applyDockVisibility = [this](bool hide) { note(fmt::format("hide {}", hide)); };
        hooks_.startMemoryMonitor = [this](Seconds interval) { note(fmt::format("monitor {}", interval.count())); };
    }

    void note(const std::string& what) {
        events_.push_back(fmt::format("{}: {}", (runLoop.now() - at("12:00:00")).count(), what));
    }

    void run() { LaunchTask(context(), runLoop, console, hooks_).run(); }

    LaunchHooks hooks_;
    std::vector<std::string> events_;
};

TEST_F(LaunchTaskTest, AppliesTheDockSettingAtOnceAndStartsTheRestLaterAndOnce) {
    const auto settings = std::make_shared<AppSettings>();
    settings->hideDockIcon = true;
    context().insert(settings);
    hooks_.isCloudAvailable = [this] {
        note("cloud");
        return false;
    };
    LaunchTask task(context(), runLoop, console, hooks_);
    task.run();
    task.run();
    runLoop.playFor(60s);
    EXPECT_THAT(events_, ElementsAre("0: hide true", "1: monitor 30", "3: cloud"));
}

TEST_F(LaunchTaskTest, ShowsTheDockIconWithoutASettingAndWhereItCannotBeRead) {
    run();
    EXPECT_THAT(console.lines(), IsEmpty());
    Database other({.file = store.file()});
    other.execute("ALTER TABLE " + AppSettings::description().table + " RENAME TO elsewhere");
    run();
    EXPECT_THAT(events_, ElementsAre("0: hide false", "0: hide false"));
    EXPECT_THAT(console.lines(),
                ElementsAre(StartsWith("⚠️ 读取 Dock 显示偏好失败，按默认显示 Dock：")));
}

TEST_F(LaunchTaskTest, SyncsOnceWhereThereIsACloudAndSaysHowItWent) {
    const auto absent = [] { return false; };
    const auto present = [] { return true; };
    const std::vector<std::string> skipped{"📱 CloudKit 可用性: false", "⚠️ CloudKit 不可用，跳过同步"};
    const std::string available = "📱 CloudKit 可用性: true";
    const std::string full = "🚀 开始执行完整同步...";
    const struct {
        std::function<bool()> isCloudAvailable;
        std::optional<std::string> error;
        std::vector<std::string> lines;
    } rows[] = {{{}, {}, skipped},
                {absent, {}, skipped},
                {present, {}, {available, full, "✅ CloudKit 同步完成"}},
                {present, "no network", {available, full, "❌ CloudKit同步失败: no network"}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.lines.back());
        console.clear();
        hooks_.isCloudAvailable = row.isCloudAvailable;
        hooks_.performFullSync = [&](ModelContext&, const LaunchHooks::SyncFinished& finished) { finished(row.error); };
        LaunchTask task(context(), runLoop, console, hooks_);
        task.run();
        runLoop.playFor(60s);
        auto expected = row.lines;
        expected.insert(expected.begin(), "🔄 开始检查 CloudKit 同步...");
        EXPECT_EQ(console.lines(), expected);
    }
}

TEST_F(LaunchTaskTest, WhatIsDueEndsWithIt) {
    run();
    runLoop.playFor(60s);
    EXPECT_THAT(events_, ElementsAre("0: hide false"));
    EXPECT_THAT(console.lines(), IsEmpty());
}

}  // namespace
}  // namespace quorvane
