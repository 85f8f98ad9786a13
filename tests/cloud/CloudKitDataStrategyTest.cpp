#include "cloud/CloudKitDataStrategy.h"

#include "cloud/CloudKitAvailability.h"
#include "platform/simulated/SimulatedRecordContainer.h"
#include "support/LoggingTest.h"

namespace quorvane {
namespace {

using platform::CloudFailure;
using platform::DatabaseScope;

TEST(CloudKitDataStrategyTest, EachTypeHasItsDatabaseAndItsPredicate) {
    const CloudKitDataStrategy::Predicate user{{"userId", "u1"}};
    const CloudKitDataStrategy::Predicate active{{"isActive", true}};
    const auto expectOf = [](const char* type, DatabaseScope scope, const auto& ofAUser, const auto& ofNobody) {
        EXPECT_EQ(CloudKitDataStrategy::database(type), scope) << type;
        EXPECT_EQ(CloudKitDataStrategy::predicate(type, "u1"), ofAUser) << type;
        EXPECT_EQ(CloudKitDataStrategy::predicate(type), ofNobody) << type;
    };
    const CloudKitDataStrategy::Predicate none;
    for (const char* type : {"ActivityRecord", "Project", "AppPreference", "Rule", "UserSettings"})
        expectOf(type, DatabaseScope::privateData, user, none);
    for (const char* type : {"AppConfig", "PublicStats", "FeaturedProjects"})
        expectOf(type, DatabaseScope::publicData, none, none);
    expectOf("ActivityShare", DatabaseScope::publicData, active, active);
    expectOf("Unheard", DatabaseScope::privateData, none, none);
}

TEST(CloudKitDataStrategyTest, AShareIsFoundByItsTokenWhileItIsActive) {
    const Localization localization("en");
    platform::SimulatedRunLoop loop(Date{});
    platform::SimulatedCloud cloud;
    platform::SimulatedRecordContainer container(cloud);
    cloud.publicRecords() = {
        {"active", {.recordType = "ActivityShare", .recordName = "active", .values = {{"isActive", true}}}},
        {"stopped", {.recordType = "ActivityShare", .recordName = "stopped", .values = {{"isActive", false}}}},
        {"other", {.recordType = "AppConfig", .recordName = "other", .values = {{"isActive", true}}}}};
    const auto found = [&](const std::string& token) {
        CloudKitDataStrategy::ShareLookup result;
        CloudKitDataStrategy::lookUpShare(token, loop, container.newSession(), localization,
                                          [&](const auto& lookup) { result = lookup; });
        loop.runPosted();
        return result.errorMessage.value_or(result.share ? result.share->recordName : "none");
    };
    EXPECT_THAT((std::vector{found("active"), found("stopped"), found("other"), found("missing")}),
                ElementsAre("active", "none", "none", "none"));
    cloud.failure.emplace(CloudFailure::Kind::unreachable, "no server");
    EXPECT_EQ(found("active"), "The share’s link could not be looked up: Cloud error: no server");
}

class CloudKitAvailabilityTest : public LoggingTest {};

TEST_F(CloudKitAvailabilityTest, TheFirstAnswerHoldsAndSaysOnceWhatIsMissing) {
    int asked = 0;
    int made = 0;
    platform::CloudService service{
        .isConfigured = [&] { return ++asked > 1; },
        .makeContainer = [&] { return ++made, std::unique_ptr<platform::RecordContainer>(); }};
    for (int i = 0; i < 2; ++i)
        EXPECT_FALSE(CloudKitAvailability::isAvailable(service, logger));
    EXPECT_EQ(CloudKitAvailability::defaultContainer(service, logger), nullptr);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(made, 0);
    EXPECT_THAT(console.lines(),
                ElementsAre(HasSubstr("[WARNING] [CloudKit] 本构建未带 CloudKit 权限，iCloud 同步停用")));
}

TEST(CloudKitSyncErrorTest, EachFailureHasItsWords) {
    using Kind = CloudFailure::Kind;
    using Code = CloudKitSyncError::Code;
    const std::tuple<Kind, Code, const char*, const char*> rows[] = {
        {Kind::noAccount, Code::notAvailable, "CloudKit不可用，请检查iCloud登录状态", "x"},
        {Kind::timedOut, Code::timeout, "同步超时（30秒），请检查网络连接", "x"},
        {Kind::recordNotFound, Code::recordNotFound, "记录未找到", "x"},
        {Kind::restricted, Code::syncFailed, "同步失败: x", ""},
        {Kind::full, Code::syncFailed, "同步失败: x", ""}};
    for (const auto& [kind, code, description, cause] : rows) {
        const auto error = CloudKitSyncError::from(CloudFailure(kind, "x"));
        EXPECT_EQ(error.code(), code);
        EXPECT_STREQ(error.what(), description);
        EXPECT_EQ(error.text(Localization("zh")), description);
        EXPECT_EQ(error.cause(), cause);
    }
    const CloudKitSyncError busy(Code::schedulerError, "x");
    EXPECT_STREQ(busy.what(), "CloudKit调度器错误: x（这通常不影响功能）");
    EXPECT_EQ(busy.text(Localization("zh")), busy.what());
    EXPECT_EQ(busy.text(Localization("en")), "The cloud’s scheduler reports x, which does no harm as a rule");
    EXPECT_STREQ(CloudKitSyncError(Code::invalidData).what(), "数据格式无效");
}

}  // namespace
}  // namespace quorvane
