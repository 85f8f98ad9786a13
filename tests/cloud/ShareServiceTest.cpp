#include "cloud/ShareService.h"

#include "cloud/CloudKitDataStrategy.h"
#include "cloud/CloudKitSyncError.h"
#include "cloud/ShareRecord.h"
#include "platform/simulated/SimulatedRecordContainer.h"
#include "store/JsonForm.h"
#include "store/StoreError.h"
#include "support/StoreTest.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <fmt/format.h>

namespace quorvane {
namespace {

using platform::CloudFailure;
using platform::CloudRecord;

using Kind = CloudFailure::Kind;
using Shares = std::vector<std::shared_ptr<ActivityShare>>;

const Uuid projectId = *Uuid::parse("11111111-2222-4333-8444-555555555555");

std::string rowOf(const ActivityShare& share) {
    std::string row;
    JsonForm::appendObject(row, share, {});
    return row;
}

std::string told(const std::exception_ptr& failure) {
    if (!failure) return "done";
    try {
        std::rethrow_exception(failure);
    } catch (const CloudKitSyncError& error) {
        return fmt::format("{} ({})", error.what(), error.cause());
    } catch (const StoreError& error) {
        return error.what();
    }
}

class ShareServiceTest : public StoreTest {
protected:
    void SetUp() override { restart(); }

    void restart(bool hasCloud = true) {
        service.reset();
        console.clear();
        service = std::make_unique<ShareService>(runLoop, console, localization,
                                                 hasCloud ? std::make_unique<platform::SimulatedRecordContainer>(cloud)
                                                          : nullptr);
    }

    // While the background is held these only begin.
    std::shared_ptr<ActivityShare> create(const ShareService::NewShare& share) {
        service->createShare(share, context(), [this](const auto& created, const auto& failure) {
            made.push_back(created);
            outcomes.push_back(told(failure));
        });
        runLoop.runPosted();
        return made.empty() ? nullptr : made.back();
    }
    void stop(const std::shared_ptr<ActivityShare>& share) {
        service->stopShare(share, context(), [this](const auto& failure) { outcomes.push_back(told(failure)); });
        runLoop.runPosted();
    }
    void load() {
        service->loadShares(context(), [this](const auto& failure) { outcomes.push_back(told(failure)); });
        runLoop.runPosted();
    }
    void goOn() {
        runLoop.releaseBackground();
        runLoop.runPosted();
    }

    std::shared_ptr<ActivityShare> stored(const std::string& token, std::string_view createdAt) {
        auto share = std::make_shared<ActivityShare>();
        share->shareToken = token;
        share->createdAt = at(createdAt);
        context().insert(share);
        context().save();
        return share;
    }
    /// A public record of another writer, who names the token.
    void publish(const std::string& name, const std::string& token) {
        cloud.publicRecords()[name] = {"ActivityShare", name, {{"shareToken", token}, {"isActive", true}}};
    }
    /// From now on the store refuses this.
    void refuse(const std::string& sql) { SQLite::Database(store.file().string(), SQLite::OPEN_READWRITE).exec(sql); }

    const Localization localization{"zh"};
    platform::SimulatedCloud cloud;
    std::unique_ptr<ShareService> service;
    Shares made;
    std::vector<std::string> outcomes;
};

TEST_F(ShareServiceTest, CreatesAndPublishesUnderTheToken) {
    std::vector<bool> loading;
    const auto listener = service->changed.subscribe([&] { loading.push_back(service->isLoading()); });
    const auto share = create({.title = "March", .expiresAt = at("2026-04-01 00:00:00"), .projectIds = {projectId}});
    EXPECT_THAT(outcomes, ElementsAre("done"));
    EXPECT_THAT(loading, ElementsAre(true, false));
    EXPECT_THAT(service->shares(), ElementsAre(share));
    EXPECT_EQ(service->errorMessage(), std::nullopt);
    const auto rows = store.anotherContext()->fetch<ActivityShare>();
    ASSERT_THAT(rows, SizeIs(1));
    const std::string token = rows.front()->shareToken();
    EXPECT_EQ(rowOf(*rows.front()),
              fmt::format(R"({{"entity":"ActivityShare","id":"{}","share_token":"{}","title":"March","is_active":true,)"
                          R"("created_at":"2026-03-02T12:00:00.000000Z","expires_at":"2026-04-01T00:00:00.000000Z",)"
                          R"("project_ids":["{}"],"cloud_kit_record_id":"{}"}})",
                          share->id().string(), token, projectId.string(), token));
    const CloudRecord record{"ActivityShare",
                             token,
                             {{"title", "March"},
                              {"isActive", true},
                              {"createdAt", at("12:00:00")},
                              {"expiresAt", at("2026-04-01 00:00:00")},
                              {"projectIds", std::vector{projectId.string()}}}};
    EXPECT_THAT(cloud.publicRecords(), ElementsAre(Pair(token, record)));
    EXPECT_THAT(cloud.privateRecords(), IsEmpty());
}

TEST_F(ShareServiceTest, WithoutTheCloudCreatingFailsAndTheObjectStays) {
    restart(false);
    EXPECT_EQ(create({.title = "March"}), nullptr);
    EXPECT_THAT(outcomes, ElementsAre("CloudKit不可用，请检查iCloud登录状态 ()"));
    EXPECT_EQ(service->errorMessage(), "创建分享失败: CloudKit不可用，请检查iCloud登录状态");
    EXPECT_FALSE(service->isLoading());
    EXPECT_THAT(service->shares(), IsEmpty());
    EXPECT_EQ(store.anotherContext()->fetch<ActivityShare>().at(0)->title(), "March");
}

TEST_F(ShareServiceTest, FailuresOfTheCloudEndInTheirWords) {
    const auto share = create({.title = "March"});
    cloud.failure = CloudFailure(Kind::timedOut, "why");
    const std::string words = "同步超时（30秒），请检查网络连接";
    create({.title = "April"});
    EXPECT_EQ(service->errorMessage(), "创建分享失败: " + words);
    stop(share);
    EXPECT_EQ(service->errorMessage(), "停止分享失败: " + words);
    load();
    EXPECT_EQ(service->errorMessage(), "CloudKit 同步失败: " + words);
    EXPECT_THAT(outcomes, ElementsAre("done", words + " (why)", words + " (why)", words + " (why)"));
    EXPECT_THAT(service->shares(), SizeIs(2));  // the store's list stands
    EXPECT_FALSE(share->isActive());
    EXPECT_THAT(cloud.publicRecords(), SizeIs(1));
    cloud.failure.reset();
    stop(share);  // a stop that failed in the cloud can be tried again
    EXPECT_EQ(outcomes.back(), "done");
    EXPECT_THAT(cloud.publicRecords(), IsEmpty());
}

TEST_F(ShareServiceTest, ARecordThatTheCloudRefusesIsAFailure) {
    runLoop.holdBackground();
    create({.title = "March"});
    const auto share = context().fetch<ActivityShare>().front();
    cloud.refusedRecords[share->shareToken()] = "too big";
    goOn();
    EXPECT_THAT(outcomes, ElementsAre("同步失败: too big ()"));
    EXPECT_EQ(share->cloudKitRecordID(), std::nullopt);
    EXPECT_THAT(service->shares(), IsEmpty());
}

TEST_F(ShareServiceTest, AStoppedShareLeavesTheCloudAndStaysHereInactive) {
    const auto first = create({.title = "March"});
    runLoop.playFor(1s);
    const auto second = create({.title = "April"});
    stop(first);
    EXPECT_THAT(outcomes, ElementsAre("done", "done", "done"));
    EXPECT_THAT(cloud.publicRecords(), ElementsAre(Pair(second->shareToken(), makeCloudRecord(*second))));
    EXPECT_THAT(service->shares(), ElementsAre(second, first));
    const auto rows = store.anotherContext()->fetch<ActivityShare>();
    EXPECT_FALSE(rows.at(0)->isActive());
    EXPECT_TRUE(rows.at(1)->isActive());
}

TEST_F(ShareServiceTest, OnlyAPublishedShareIsTakenFromTheCloudAndAFailedReloadIsNoFailedStop) {
    const auto share = stored("t1", "09:00:00");
    cloud.failure = CloudFailure(Kind::unreachable, "away");
    stop(share);
    EXPECT_THAT(outcomes, ElementsAre("done"));
    EXPECT_EQ(service->errorMessage(), "CloudKit 同步失败: 同步失败: away");
    EXPECT_THAT(service->shares(), ElementsAre(share));
    EXPECT_EQ(cloud.sessions, 1);  // the reload's
    restart(false);
    stop(share);
    EXPECT_EQ(outcomes.back(), "done");
}

TEST_F(ShareServiceTest, LoadingTakesOverWhatTheCloudSaysOfATokenAndNothingElse) {
    const auto ours = create({.title = "March"});
    const auto older = stored("t0", "09:00:00");
    const auto newer = stored("t599", "13:00:00");
    for (int i = 1; i < 1200; ++i)
        publish(fmt::format("record {}", i), fmt::format("t{}", i));
    publish("record 0", "t0");
    cloud.publicRecords()["record 0"].values["createdAt"] = at("09:00:00");
    cloud.unreadableRows = {{.recordName = "bad", .reason = "no object"}};
    older->isActive = false;
    context().save();
    const std::string before = rowOf(*ours);
    load();
    EXPECT_THAT(outcomes, ElementsAre("done", "done"));
    EXPECT_THAT(service->shares(), ElementsAre(newer, ours, older));
    EXPECT_EQ(rowOf(*ours), before);
    const auto rows = store.anotherContext()->fetch<ActivityShare>();
    EXPECT_EQ(rows.at(1)->cloudKitRecordID(), "record 0");
    EXPECT_TRUE(rows.at(1)->isActive());
    EXPECT_EQ(rows.at(2)->cloudKitRecordID(), "record 599");
    EXPECT_THAT(rows, SizeIs(3));
}

TEST_F(ShareServiceTest, LoadingReadsNoFurtherThanTheLimit) {
    for (std::size_t i = 1; i <= CloudKitDataStrategy::defaultResultLimit; ++i)
        publish(fmt::format("record {:05}", i), fmt::format("t{}", i));
    publish("record 00000", "t0");  // the last of them
    const auto share = stored("t0", "09:00:00");
    load();
    EXPECT_EQ(share->cloudKitRecordID(), std::nullopt);
}

TEST_F(ShareServiceTest, FailuresOfTheStoreAreTold) {
    const auto share = stored("t1", "09:00:00");
    publish("record 1", "t1");
    refuse("CREATE TRIGGER refuse BEFORE UPDATE ON activity_share BEGIN SELECT RAISE(ABORT, 'not now'); END");
    load();
    EXPECT_THAT(outcomes, ElementsAre("done"));
    EXPECT_THAT(console.lines(), ElementsAre(StartsWith("同步 CloudKit 记录失败: ")));
    stop(share);
    EXPECT_EQ(service->errorMessage(), "停止分享失败: " + outcomes.back());
    EXPECT_THAT(cloud.publicRecords(), SizeIs(1));
    refuse("DROP TABLE activity_share");
    load();
    EXPECT_EQ(service->errorMessage(), "加载分享失败: " + outcomes.back());
    create({.title = "March"});
    EXPECT_EQ(service->errorMessage(), "创建分享失败: " + outcomes.back());
    EXPECT_THAT(cloud.publicRecords(), SizeIs(1));
}

TEST_F(ShareServiceTest, OperationsRunOneAfterAnother) {
    const auto share = stored("t1", "09:00:00");
    runLoop.holdBackground();
    create({.title = "March"});
    stop(share);
    load();
    EXPECT_TRUE(share->isActive());
    EXPECT_TRUE(service->isLoading());
    EXPECT_THAT(outcomes, IsEmpty());
    goOn();
    EXPECT_THAT(outcomes, ElementsAre("done", "done", "done"));
    EXPECT_FALSE(share->isActive());
    EXPECT_FALSE(service->isLoading());
    EXPECT_EQ(cloud.sessions, 3);
}

TEST_F(ShareServiceTest, AtItsEndItCallsOffWhatIsUnderWay) {
    runLoop.holdBackground();
    create({.title = "March"});
    load();
    service.reset();
    goOn();
    EXPECT_THAT(console.lines(), ElementsAre("ShareService: deinit - 清理资源", "ShareService: 资源清理完成"));
    EXPECT_THAT(outcomes, IsEmpty());
    EXPECT_THAT(cloud.publicRecords(), IsEmpty());
}

TEST_F(ShareServiceTest, TheListenerMayEndTheService) {
    service->createShare({.title = "March"}, context(), [this](const auto&, const auto&) { service.reset(); });
    load();
    EXPECT_EQ(service, nullptr);
    EXPECT_THAT(outcomes, IsEmpty());
}

TEST_F(ShareServiceTest, ExportsOrSaysWhyNot) {
    const auto share = stored("t1", "09:00:00");
    share->projectIds = {projectId};
    aRecord().app("Editor").project(insertProject(context(), "Website")).in(context());
    context().save();
    const auto other = store.anotherContext();
    const auto records = other->fetch<ActivityRecord>();
    refuse("ALTER TABLE project RENAME TO elsewhere");
    EXPECT_EQ(service->exportShareData(*share, records), std::nullopt);
    EXPECT_THAT(service->errorMessage().value_or(""), StartsWith("导出活动数据失败: "));
    EXPECT_EQ(jsonText(service->exportShareData(*share, {}).value_or(Json())["activities"]), "[]");
}

}  // namespace
}  // namespace quorvane
