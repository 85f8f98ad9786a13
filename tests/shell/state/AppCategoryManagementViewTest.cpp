#include "shell/state/AppCategoryManagementView.h"

#include "platform/simulated/InMemoryUserDefaults.h"
#include "support/Mapped.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"

namespace quorvane {
namespace {

using Preferences = CategoryTagManager::AppPreferences;

class AppCategoryManagementViewTest : public testing::Test {
protected:
    auto names() { return mapped(view.rows(), &AppCategoryManagementView::Row::appName); }

    platform::InMemoryUserDefaults defaults;
    RecordingConsole console;
    CategoryTagManager manager{defaults, console};
    const Localization localization{"en"};
    AppCategoryManagementView view{manager, localization};
};

TEST_F(AppCategoryManagementViewTest, AnAddedApplicationIsKeptAtOnceWithTheTagsThatWereTyped) {
    view.beginAdding();
    EXPECT_FALSE(view.save());
    view.newAppName = " \n";
    EXPECT_FALSE(view.save());
    EXPECT_TRUE(view.showingAddApp());
    view.newAppName = " Figma ";
    view.newAppCategory = "工作";
    view.toggleTag("设计");
    view.toggleTag("写作");
    view.toggleTag("写作");
    view.customTag = "icons, ,grid,WRITING";
    EXPECT_TRUE(view.save());
    EXPECT_FALSE(view.showingAddApp());
    EXPECT_EQ(manager.preference("Figma"), (Preferences{"工作", {"grid", "icons", "写作", "设计"}}));
}

TEST_F(AppCategoryManagementViewTest, EditingBeginsWithWhatIsRememberedAndARenamedApplicationLeavesItsOldName) {
    manager.saveAppPreferences({{"Figma", {"Gone", {"own"}}}, {"Mail", {}}});
    view.beginEditing("Figma");
    EXPECT_EQ(view.offeredCategories().back(), "Gone");
    EXPECT_EQ(view.offeredTags().back(), "own");
    view.newAppName = "Figma Desktop";
    view.save();
    EXPECT_EQ(manager.loadAppPreferences(),
              (CategoryTagManager::AppPreferencesMap{{"Figma Desktop", {"Gone", {"own"}}}, {"Mail", {}}}));
}

TEST_F(AppCategoryManagementViewTest, TheListIsInOrderWhateverTheCaseAndShowsWhatIsSearched) {
    manager.saveAppPreferences({{"b", {}}, {"A", {}}, {"Élan", {}}, {"Zed", {}}});
    view.remove("Zed");
    EXPECT_THAT(names(), ElementsAre("A", "b", "Élan"));
    view.searchText = " elan ";
    EXPECT_THAT(names(), ElementsAre("Élan"));
}

TEST_F(AppCategoryManagementViewTest, OwnCategoriesComeAndGoAndTheirApplicationsKeepThem) {
    int changes = 0;
    const auto changed = view.changed.subscribe([&] { ++changes; });
    for (const char* name : {"Family", " Accounting ", "Family", "", "work"}) {
        view.newCategoryName = name;
        view.addCategory();
        EXPECT_EQ(view.newCategoryName, "");
    }
    EXPECT_THAT(view.customCategories(), ElementsAre("Accounting", "Family"));
    manager.setPreference("Mail", {"Family", {}});
    view.removeCategory("Family");
    EXPECT_THAT(view.customCategories(), ElementsAre("Accounting"));
    EXPECT_EQ(view.rows().front().category, "Family");
    EXPECT_EQ(changes, 6);
}

}  // namespace
}  // namespace quorvane
