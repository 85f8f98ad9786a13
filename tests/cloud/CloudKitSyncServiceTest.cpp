#include "cloud/CloudKitSyncService.h"

#include "platform/Clock.h"
#include "platform/simulated/SimulatedRecordContainer.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "store/ActivityRecordCloudForm.h"
#include "store/JsonForm.h"
#include "support/Builders.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"
#include "support/TemporaryStore.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

using platform::AccountStatus;
using platform::CloudFailure;
using platform::CloudRecord;
using platform::SimulatedCloud;

/// One installation: a store and a service over a cloud that it may share with others.
class Installation {
public:
    Installation(platform::SimulatedRunLoop& runLoop, SimulatedCloud& cloud)
        : loop(runLoop),
          service(runLoop, console, localization, std::make_unique<platform::SimulatedRecordContainer>(cloud)) {}

    void begin() {
        service.performFullSync(store.context(),
                                [this](const auto& error) { outcomes.push_back(error ? error->what() : "done"); });
    }
    void sync() {
        begin();
        loop.runPosted();
    }

    void records(int count) {
        for (int i = 0; i < count; ++i) {
            const std::string minute = fmt::format("09:{:02}:", i % 60);
            aRecord().from(minute + "00").to(minute + "30").app(fmt::format("App {:04}", i)).in(store.context());
        }
    }

    std::vector<std::shared_ptr<ActivityRecord>> all() { return store.context().fetch<ActivityRecord>(); }
    std::size_t unsent() { return store.context().count(field(&ActivityRecord::cloudKitRecordID).isNone()); }

    /// The records with all their values, sorted.
    std::vector<std::string> rows() {
        JsonForm::RowIds projects;
        for (const auto& project : store.context().fetch<Project>())
            projects[project->objectId()] = project->id();
        std::vector<std::string> out;
        for (const auto& record : all())
            JsonForm::appendObject(out.emplace_back(), *record, projects);
        std::ranges::sort(out);
        return out;
    }

    platform::SimulatedRunLoop& loop;
    RecordingConsole console;
    TemporaryStore store;
    const Localization localization{"zh"};
    CloudKitSyncService service;
    std::vector<std::string> outcomes;
};

class CloudKitSyncServiceTest : public testing::Test {
protected:
    platform::SimulatedRunLoop loop{at("2026-03-02 12:00:00")};
    platform::ClockOverride clock{[this] { return loop.now(); }};
    SimulatedCloud cloud;
    Installation here{loop, cloud};
    Installation there{loop, cloud};
};

TEST_F(CloudKitSyncServiceTest, WhatOneInstallationSendsTheOtherHasFieldByField) {
    here.records(250);
    const auto project = insertProject(here.store.context(), "Website");
    aRecord().from("10:00:00").to("11:00:00.123456").tags("a,b").project(project).in(here.store.context());
    aRecord().from("11:30:00").app("Still open").in(here.store.context());
    here.console.clear();
    here.sync();

    EXPECT_THAT(here.outcomes, ElementsAre("done"));
    EXPECT_THAT(here.console.lines(),
                ElementsAre("CloudKitSyncService: 开始同步ActivityRecord",
                            "CloudKitSyncService: 找到 252 条本地记录需要同步", "CloudKitSyncService: 上传完成",
                            "CloudKitSyncService: 下载了 252 条云端记录", "CloudKitSyncService: 数据合并完成",
                            "CloudKitSyncService: 同步完成"));
    ASSERT_THAT(cloud.batches, SizeIs(3));
    EXPECT_THAT(cloud.batches[0], SizeIs(100));
    EXPECT_EQ(cloud.privateRecords().at(cloud.batches[0][0]).get<std::string>("appName"), "Still open");
    EXPECT_EQ(here.unsent(), 0U);
    EXPECT_EQ(here.service.lastSyncDate(), loop.now());
    EXPECT_EQ(here.service.progress(), (SyncProgress{.toUpload = 252, .uploaded = 252, .downloaded = 252}));

    there.sync();
    EXPECT_TRUE(there.rows() == here.rows());
    EXPECT_EQ(there.store.context().fetch<Project>().front()->name(), "未分类项目");
    there.sync();
    EXPECT_TRUE(there.rows() == here.rows());
    EXPECT_THAT(there.console.lines(), Contains("CloudKitSyncService: 找到 0 条本地记录需要同步"));
    EXPECT_THAT(cloud.batches, SizeIs(3));
}

// What a merge takes over is shown where records are merged.
TEST_F(CloudKitSyncServiceTest, TheNewerOfTwoWinsAndAnEqualOneChangesNothing) {
    for (const auto& [updated, title] : {std::pair("10:00:00", "mine"), {"10:00:00.000001", "theirs"}}) {
        Installation one(loop, cloud);
        const auto local = aRecord().title("mine").updated("10:00:00").in(one.store.context());
        one.sync();
        CloudRecord& inCloud = cloud.privateRecords().at(local->id().string());
        inCloud.values["windowTitle"] = "theirs";
        inCloud.values["updatedAt"] = at(updated);
        one.sync();
        EXPECT_EQ(local->windowTitle(), title);
        EXPECT_EQ(one.all().size(), 1U);
        cloud.privateRecords().clear();
    }
}

TEST_F(CloudKitSyncServiceTest, ARefusedRecordIsNamedAndTheOthersOfItsBatchAreSaved) {
    here.records(100);
    here.store.context().save();
    const std::string refused = here.all().at(41)->id().string();
    cloud.refusedRecords[refused] = "the server refused it";
    cloud.unreadableRows = {{.recordName = "strange", .reason = "no object"}};
    here.sync();
    EXPECT_THAT(here.outcomes, ElementsAre("done"));
    EXPECT_EQ(here.service.progress(),
              (SyncProgress{.toUpload = 100, .uploaded = 100, .refused = 1, .downloaded = 99, .unreadable = 1}));
    EXPECT_EQ(here.unsent(), 1U);
    EXPECT_EQ(cloud.privateRecords().size(), 99U);
    EXPECT_THAT(here.console.lines(), AllOf(Contains(fmt::format("保存记录失败: {}: the server refused it", refused)),
                                            Contains("下载CloudKit记录失败: strange: no object"),
                                            Contains("CloudKitSyncService: 下载了 99 条云端记录")));
    cloud.refusedRecords.clear();
    here.sync();
    EXPECT_EQ(here.unsent(), 0U);
    EXPECT_THAT(cloud.batches.back(), ElementsAre(refused));
}

TEST_F(CloudKitSyncServiceTest, AConnectionLostAtWhateverStageCostsNothingAndDoublesNothing) {
    // Three batches up and a page down; the answer of the call is lost before or after its work.
    for (int call = 0; call < 4; ++call)
        for (const bool losesAnswer : {false, true}) {
            SCOPED_TRACE(fmt::format("call {}, {}", call, losesAnswer ? "done" : "not done"));
            SimulatedCloud shared;
            Installation one(loop, shared);
            Installation two(loop, shared);
            two.records(100);
            two.sync();
            one.records(300);
            shared.failure.emplace(CloudFailure::Kind::lost, "the connection is gone");
            shared.callsBeforeFailure = call;
            shared.losesAnswer = losesAnswer;
            one.sync();
            EXPECT_THAT(one.outcomes, ElementsAre("同步失败: the connection is gone"));
            EXPECT_EQ(one.service.syncError(), "同步失败: the connection is gone");
            shared.failure.reset();
            one.sync();
            EXPECT_THAT(one.outcomes, ElementsAre(testing::_, "done"));
            EXPECT_EQ(one.service.syncError(), std::nullopt);
            EXPECT_EQ(one.unsent(), 0U);
            EXPECT_EQ(shared.privateRecords().size(), 400U);
            two.sync();
            EXPECT_EQ(one.all().size(), 400U);
            EXPECT_TRUE(one.rows() == two.rows());
        }
}

TEST_F(CloudKitSyncServiceTest, ASecondCallWhileOneRunsFinishesAtOnce) {
    here.records(1);
    loop.holdBackground();
    here.begin();
    here.sync();
    EXPECT_THAT(here.outcomes, ElementsAre("done"));
    EXPECT_THAT(here.console.lines(), Contains("CloudKitSyncService: 同步已在进行中，跳过重复请求"));
    EXPECT_TRUE(here.service.isSyncing());
    loop.releaseBackground();
    loop.runPosted();
    EXPECT_THAT(here.outcomes, ElementsAre("done", "done"));
    EXPECT_EQ(cloud.privateRecords().size(), 1U);
}

TEST_F(CloudKitSyncServiceTest, AServerThatSaysNothingEndsTheSyncAfterThirtySeconds) {
    here.records(150);
    loop.holdBackground();
    here.begin();
    loop.playFor(29.9s);
    EXPECT_TRUE(here.service.isSyncing());
    loop.playFor(0.1s);
    EXPECT_FALSE(here.service.isSyncing());
    EXPECT_THAT(here.outcomes, ElementsAre("同步超时（30秒），请检查网络连接"));
    // The late answer is nobody's; the next sync is whole.
    loop.releaseBackground();
    here.sync();
    EXPECT_THAT(here.outcomes, ElementsAre(testing::_, "done"));
    EXPECT_EQ(cloud.privateRecords().size(), 150U);
    EXPECT_EQ(here.unsent(), 0U);
    loop.playFor(60s);
    EXPECT_THAT(here.outcomes, SizeIs(2));
}

TEST_F(CloudKitSyncServiceTest, AFailureOfTheSchedulerStaysSilent) {
    cloud.failure.emplace(CloudFailure::Kind::refused, "CKScheduler is busy");
    here.sync();
    EXPECT_THAT(here.outcomes, ElementsAre("done"));
    EXPECT_EQ(here.service.syncError(), "同步失败: CKScheduler is busy");
    EXPECT_EQ(here.service.lastSyncDate(), std::nullopt);
    EXPECT_THAT(here.console.lines(), Contains("CloudKitSyncService: 检测到CloudKit调度器错误，这通常不影响功能"));
}

TEST_F(CloudKitSyncServiceTest, TheFirstDownloadGoesToTheEndAlsoInPartsAndLaterOnesTakeTheNewest) {
    const auto add = [&](int minute) {
        CloudRecord record{.recordType = "ActivityRecord", .recordName = Uuid::random().string()};
        record.values = {{"localId", record.recordName}, {"createdAt", at("2020-01-01 00:00:00") + minute * 60s}};
        cloud.privateRecords().emplace(record.recordName, record);
    };
    const auto stored = [&] { return here.store.context().count<ActivityRecord>(); };
    constexpr int all = 12'600;
    for (int i = 0; i < all; ++i)
        add(i);
    // It breaks off on the way, far behind the newest.
    cloud.failure.emplace(CloudFailure::Kind::lost, "gone");
    cloud.callsBeforeFailure = 12;
    here.sync();
    EXPECT_THAT(here.outcomes, ElementsAre("同步失败: gone"));
    EXPECT_EQ(stored(), 12'000U);
    cloud.failure.reset();
    add(all);
    here.sync();
    EXPECT_EQ(stored(), static_cast<std::size_t>(all + 1));
    EXPECT_EQ(here.service.progress().downloaded, 10'600U);
    // What was deleted here comes back only where it is among the newest.
    auto& context = here.store.context();
    const auto oldest = context.fetch<ActivityRecord>({.sort = {ascending(&ActivityRecord::createdAt)}, .limit = 1});
    context.remove(oldest.front());
    here.sync();
    EXPECT_EQ(here.service.progress().downloaded, 10'000U);
    EXPECT_EQ(stored(), static_cast<std::size_t>(all));
}

TEST_F(CloudKitSyncServiceTest, WithoutACloudNothingIsAskedAndAServiceThatGoesTakesNothingWithIt) {
    here.records(3);
    for (const bool hasCloud : {false, true}) {
        std::vector<std::string> heard;
        if (hasCloud) loop.holdBackground();
        {
            CloudKitSyncService service(loop, here.console, here.localization,
                                        hasCloud ? std::make_unique<platform::SimulatedRecordContainer>(cloud)
                                                 : nullptr);
            EXPECT_EQ(service.isInitialized(), hasCloud);
            service.syncActivityRecords(here.store.context(),
                                        [&](const auto& error) { heard.push_back(error ? error->what() : "done"); });
            service.checkCloudKitAccountStatus([&](AccountStatus status, const std::string&) {
                heard.push_back(status == AccountStatus::couldNotDetermine ? "undetermined" : "determined");
            });
            EXPECT_THAT(heard, IsEmpty());
            loop.runPosted();
            EXPECT_EQ(service.syncError(), std::nullopt);
        }
        EXPECT_EQ(here.console.lines().back(), "CloudKitSyncService: 资源清理完成");
        if (hasCloud) loop.releaseBackground();
        loop.playFor(60s);
        using Texts = std::vector<std::string>;
        EXPECT_EQ(heard, hasCloud ? Texts{} : (Texts{"CloudKit不可用，请检查iCloud登录状态", "undetermined"}));
        EXPECT_TRUE(hasCloud || cloud.sessions == 0);
        EXPECT_THAT(cloud.batches, IsEmpty());
    }
}

}  // namespace
}  // namespace quorvane
