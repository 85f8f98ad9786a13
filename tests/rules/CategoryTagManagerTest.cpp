#include "rules/CategoryTagManager.h"

#include "platform/Clock.h"
#include "platform/simulated/InMemoryUserDefaults.h"
#include "support/Builders.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"
#include "support/TemporaryStore.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

using Texts = std::vector<std::string>;

class CategoryTagManagerTest : public testing::Test {
protected:
    platform::InMemoryUserDefaults defaults;
    RecordingConsole console;
    CategoryTagManager manager{defaults, console};
};

TEST_F(CategoryTagManagerTest, KeepsTheUsersOwnCategoriesSortedAndEachOnce) {
    for (const char* name : {" 深度 ", "Garden", "\n", "深度", "工作", "Garden"})
        manager.addCustomCategory(name);
    EXPECT_THAT(manager.customCategories(), ElementsAre("Garden", "工作", "深度"));
    EXPECT_EQ(defaults.value("CustomActivityCategories"), R"(["Garden","工作","深度"])");
    EXPECT_THAT(manager.allCategories(), ElementsAre("工作", "学习", "娱乐", "运动", "社交", "休息", "出行", "购物",
                                                     "其他", "空闲", "Garden", "工作", "深度"));
    manager.removeCustomCategory("工作");
    manager.removeCustomCategory("unknown");
    EXPECT_THAT(manager.customCategories(), ElementsAre("Garden", "深度"));
}

TEST_F(CategoryTagManagerTest, RemembersCategoryAndTagsByTheExactNameOfAnApplication) {
    manager.setPreference("Editor", {.category = "工作", .tags = {"b", "a"}});
    manager.setPreference("Mail/\"x\"", {});
    EXPECT_EQ(defaults.value("AppCategoryPreferences"),
              R"({"Editor":{"category":"工作","tags":["b","a"]},"Mail/\"x\"":{"tags":[]}})");
    EXPECT_EQ(manager.preference("Editor"), (CategoryTagManager::AppPreferences{"工作", {"b", "a"}}));
    EXPECT_EQ(manager.preference("Mail/\"x\""), CategoryTagManager::AppPreferences{});
    EXPECT_EQ(manager.preference("editor"), std::nullopt);
}

TEST_F(CategoryTagManagerTest, WhatCannotBeReadCountsAsNothing) {
    for (const char* stored : {"", "[]", "7", R"({"A":{"tags":[]},"B":{}})", R"({"A":{"tags":[1]}})", R"({"A":[]})",
                               R"({"A":{"tags":[],"category":1}})", "{\"A"}) {
        SCOPED_TRACE(stored);
        defaults.setValue("AppCategoryPreferences", stored);
        defaults.setValue("CustomActivityCategories", stored);
        EXPECT_TRUE(manager.loadAppPreferences().empty());
        EXPECT_TRUE(manager.customCategories().empty());
    }
    manager.setPreference("A", {.tags = {"x"}});
    EXPECT_EQ(manager.loadAppPreferences().size(), 1);
}

TEST_F(CategoryTagManagerTest, AChoiceReachesAllRecordsOfTheApplicationAndNoOther) {
    const platform::ClockOverride clock([] { return at("12:00:00"); });
    TemporaryStore store;
    for (const char* app : {"Editor", "editor", "Editor"})
        aRecord().app(app).tags("old").source("system|rule:x").category(ActivityCategory::rest).in(store.context());
    store.context().save();
    manager.applyPreference("Editor", {.category = std::nullopt, .tags = {"b", "a"}}, store.context());
    manager.applyPreference("Nobody", {}, store.context());
    Texts found;
    const auto reader = store.anotherContext();
    for (const auto& record : reader->fetch<ActivityRecord>())
        found.push_back(fmt::format("{} {} {} {} {}", *record->appName(), record->category().value_or("-"),
                                    record->tags(), *record->source(), record->updatedAt() == at("12:00:00")));
    EXPECT_THAT(found, ElementsAre("Editor - b,a system|rule:x true", "editor 休息 old system|rule:x false",
                                   "Editor - b,a system|rule:x true"));
    EXPECT_THAT(console.lines(), ElementsAre("CategoryTagManager: 已更新 2 条 Editor 的记录",
                                             "CategoryTagManager: 已更新 0 条 Nobody 的记录"));
}

TEST_F(CategoryTagManagerTest, AChoiceThatCannotBeSavedIsReportedAndWaits) {
    TemporaryStore store;
    const auto record = aRecord().app("Editor").in(store.context());
    store.context().save();
    Database other({.file = store.file()});
    other.execute("CREATE TRIGGER refuse BEFORE UPDATE ON activity_record BEGIN SELECT RAISE(ABORT, 'refused'); END");
    manager.applyPreference("Editor", {.category = "工作"}, store.context());
    EXPECT_THAT(console.lines(),
                ElementsAre(AllOf(StartsWith("CategoryTagManager: 更新记录失败: "), HasSubstr("refused"))));
    EXPECT_EQ(record->category(), "工作");
    EXPECT_TRUE(store.context().hasChanges());
}

}  // namespace
}  // namespace quorvane
