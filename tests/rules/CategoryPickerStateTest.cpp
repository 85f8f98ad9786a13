#include "rules/CategoryPickerState.h"

#include "platform/Clock.h"
#include "platform/simulated/InMemoryUserDefaults.h"
#include "support/Builders.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"
#include "support/TemporaryStore.h"

namespace quorvane {
namespace {

class CategoryPickerStateTest : public testing::Test {
protected:
    CategoryPickerState open(const std::shared_ptr<ActivityRecord>& record) { return {record, manager, console}; }

    TemporaryStore store;
    platform::InMemoryUserDefaults defaults;
    RecordingConsole console;
    CategoryTagManager manager{defaults, console};
};

TEST_F(CategoryPickerStateTest, OpensWithTheRecordsOwnChoiceOrElseWithTheRememberedOne) {
    manager.setPreference("Editor", {.category = "工作", .tags = {"b", "a"}});
    manager.setPreference("Mail", {.tags = {"post"}});
    struct Row {
        std::shared_ptr<ActivityRecord> record;
        std::optional<std::string> category;
        std::set<std::string> tags;
        bool isLoaded;
    };
    const Row rows[] = {
        {aRecord().app("Editor").category(ActivityCategory::rest).tags("z").make(), "休息", {"z"}, false},
        {aRecord().app("Editor").tags("z").make(), "工作", {"a", "b"}, true},
        {aRecord().app("Mail").tags("z,y").make(), std::nullopt, {"y", "z"}, false},
        {aRecord().make(), std::nullopt, {}, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(&row - rows);
        const auto before = console.lines().size();
        const auto state = open(row.record);
        EXPECT_EQ(state.selectedCategory, row.category);
        EXPECT_EQ(state.selectedTags, row.tags);
        EXPECT_EQ(console.lines().size() - before, row.isLoaded ? 1 : 0);
    }
    EXPECT_THAT(console.lines(), ElementsAre("CategoryPickerView: 从偏好中加载了 Editor 的分类设置"));
}

TEST_F(CategoryPickerStateTest, SavingWritesRemembersAndReachesAllRecordsInThisOrder) {
    const platform::ClockOverride clock([] { return at("12:00:00"); });
    const auto older = aRecord().app("Editor").category(ActivityCategory::rest).in(store.context());
    const auto record = aRecord().app("Editor").in(store.context());
    auto state = open(record);
    state.selectedCategory = "深度";
    state.toggleTag("b");
    state.toggleTag("c");
    state.toggleTag("c");
    state.addTags(" a ,, \n", Localization("en"));
    bool isDismissed = false;
    const auto subscription = state.dismissed.subscribe([&] { isDismissed = true; });
    state.save();
    EXPECT_TRUE(isDismissed);
    EXPECT_EQ(manager.preference("Editor"), (CategoryTagManager::AppPreferences{"深度", {"a", "b"}}));
    for (const auto& each : {older, record}) {
        EXPECT_EQ(each->category(), "深度");
        EXPECT_EQ(each->tags(), "a,b");
        EXPECT_EQ(each->updatedAt(), at("12:00:00"));
    }
    EXPECT_FALSE(store.context().hasChanges());
    EXPECT_THAT(console.lines(), ElementsAre("CategoryPickerView: 已保存 Editor 的分类偏好",
                                             "CategoryTagManager: 已更新 2 条 Editor 的记录"));
}

TEST_F(CategoryPickerStateTest, ARecordWithoutNameOrStoreChangesAlone) {
    const auto other = aRecord().app("Editor").in(store.context());
    const auto nameless = aRecord().in(store.context());
    auto first = open(nameless);
    first.selectedCategory = "工作";
    first.save();
    EXPECT_EQ(nameless->category(), "工作");
    EXPECT_TRUE(manager.loadAppPreferences().empty());
    const auto free = aRecord().app("Editor").make();
    auto second = open(free);
    second.selectedCategory = "学习";
    second.save();
    EXPECT_EQ(free->category(), "学习");
    EXPECT_EQ(other->category(), std::nullopt);
    EXPECT_THAT(console.lines(), ElementsAre("CategoryPickerView: 已保存 Editor 的分类偏好",
                                             "CategoryPickerView: 无法获取 ModelContext"));
}

TEST_F(CategoryPickerStateTest, SuggestsByWordsAnywhereInTheNameOncePerGroup) {
    using enum ActivityCategory;
    struct Row {
        const char* name;
        std::vector<ActivityCategory> expected;
    };
    const Row rows[] = {
        {"Xcode", {work}},
        {"Knowledge", {learn}},
        {"1Password", {work}},
        {"YouTube Music", {entertainment}},
        {"Cursor Pages", {work, work}},
        {"QQ Music", {entertainment, social}},
        {"Firefox", {learn}},
        {"", {}},
        {"mousepad", {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(suggestedCategories(row.name), row.expected);
    }
    EXPECT_THAT(open(aRecord().app("Firefox").make()).suggestions(), ElementsAre(learn));
}

}  // namespace
}  // namespace quorvane
