#include "desktop/support/ApplicationScreen.h"
#include "desktop/support/Waiting.h"
#include "support/Builders.h"
#include "support/Matching.h"

namespace quorvane {
namespace {

using Names = std::vector<std::string>;

const Names sidebar{"Pause Recording", "Fix, No web addresses", "Settings", "Cloud sync",
                    "About Quorvane"};  // behind the section, which comes first

/// What follows the page's own controls on the way round.
Names withSidebar(Names page, const std::string& first) {
    page.emplace_back("Timeline");  // the four sections are one stop
    page.insert(page.end(), sidebar.begin(), sidebar.end());
    page.push_back(first);
    return page;
}

/// Every screen by the keyboard alone, over a record of Harbour that somebody has to look at.
class ScreensTest : public ApplicationScreen {
protected:
    ScreensTest() {
        auto store = openStore();
        auto& context = store.mainContext();
        const auto record = insertRecord(context, "Browser", 13, 13.75);
        record->project = insertProject(context, "Harbour", 80);
        record->setBillingStatus(BillingStatus::review);
        context.save();
    }

    /// The screen has come, with the focus on `first`; Tab goes its way, and nothing on it lacks a name.
    void expectRound(const std::string& first, const Names& round) {
        ASSERT_TRUE(focusComesTo(first)) << focus();
        EXPECT_THAT(tabRound(), ElementsAreArray(round));
        EXPECT_THAT(unnamed(), IsEmpty());
    }
};

TEST_F(ScreensTest, TabGoesThroughEverySectionInReadingOrder) {
    start();
    press("ctrl+2");
    expectRound("This month", withSidebar({"All projects", "All clients", "All categories", "Review Records", "Harbour",
                                           "Preview Bill", "Copy E-mail", "Copy Social Post", "Export Bill"},
                                          "This month"));
    press("ctrl+3");
    expectRound("Import Built-in Rules",
                withSidebar({"New", "Search rules", "Import Built-in Rules", "Name", "Application", "contains",
                             "When, Application, contains", "No category", "Not set", "Tags, separated by commas",
                             "Priority", "Enabled", "Stop after this rule"},
                            "Import Built-in Rules"));
    press("ctrl+4");
    expectRound("Start", withSidebar({"Start, time", "End", "End, time", "Harbour, Not set", "Export CSV"}, "Start"));
}

TEST_F(ScreensTest, TabGoesThroughTheSheetsOfABillAndEscapeLeavesThem) {
    start();
    press("ctrl+2");
    ASSERT_TRUE(focusComesTo("This month"));
    const std::tuple<const char*, const char*, Names> sheets[] = {
        {"ctrl+r",
         "Browser, ",
         {"Harbour", "To review", "Billable", "Exclude", "Mark All Billable", "Exclude All", "Done", "Close"}},
        {"ctrl+p", "Report", {"Report", "Copy", "Close", "Close", "Report"}},
        {"ctrl+e", "Review Records", {"Export Anyway", "Cancel", "Review Records"}},
    };
    for (const auto& [keys, first, names] : sheets) {
        SCOPED_TRACE(keys);
        press(keys);
        ASSERT_TRUE(waitUntil([&, wanted = first] { return focus().starts_with(wanted); })) << focus();
        auto round = names;
        if (round.back() == "Close") round.push_back(focus());
        expectRound(focus(), round);
        press("Escape");
        EXPECT_TRUE(focusComesTo("This month")) << focus();
    }
    press("Tab", "Tab", "Tab", "Tab", "Tab", "F2");
    expectRound("Project name", {"Client name", "Hourly rate", "USD", "Done", "Project name"});
    press("Escape");
    EXPECT_TRUE(focusComesTo("Harbour")) << focus();
}

TEST_F(ScreensTest, TabGoesThroughTheSettingsAndArrowsChooseTheirTabs) {
    start();
    press("ctrl+comma");
    const std::pair<const char*, Names> tabs[] = {
        {"General", {"Hide from the taskbar", "Start when I log in", "English"}},
        {"Tracking",
         {"Notice when I am away", "5 minutes", "A call or a film counts as presence",
          "Ask about the time away when I am back", "Another title begins a record", "Record during work hours only"}},
        {"Capture", {"Copy Command", "Accessibility, Fix", "Web addresses, Copy Command"}},
        {"Organization",
         {"Search applications", "Add Application", "Name of a new category", "Add Category", "Add Application"}},
        {"Diagnostics",
         {"Open Log Window", "Export Diagnostic Report", "Clear Logs", "Accessibility, Grant Access",
          "Check Permissions Again", "Test Web Address", "Test Document"}}};
    for (const auto& [tab, controls] : tabs) {
        SCOPED_TRACE(tab);
        auto round = controls;
        for (const char* name : {"Cancel", "Save", "Close", tab})
            round.emplace_back(name);
        expectRound(tab, round);
        press("Right");
    }
    press("Escape");
    EXPECT_TRUE(goes("page tab", "General"));
}

TEST_F(ScreensTest, TheLogHasAWindowOfItsOwnAndTheAboutScreenLeadsToTheLicences) {
    start();
    press("F1");
    expectRound("Libraries and Licences…", {"Close", "Libraries and Licences…"});
    press("Return");
    EXPECT_TRUE(comes("label", "SQLite"));
    press("Escape", "Escape");
    press("ctrl+shift+l");
    ASSERT_TRUE(waitUntil([&] { return focus().find("INFO, AppLogger") != std::string::npos; })) << focus();
    expectRound(focus(), {"All", "Search messages and modules", "Follow", "Refresh", "Clear Logs",
                          "Export Diagnostic Report", focus()});
    press("ctrl+w");
    EXPECT_TRUE(goes("push button", "Export Diagnostic Report"));
}

TEST_F(ScreensTest, TheSyncScreenOpensWithoutACloudServiceAndSaysHowToSetOneUp) {
    start();
    click("push button", "Cloud sync");
    expectRound("Close", {"Close"});
    EXPECT_TRUE(comes("label", "No cloud database is set up for Quorvane."));
}

TEST_F(ScreensTest, SettingsAreKeptWithSaveAndImmediateSwitchesWithoutIt) {
    start();
    press("ctrl+comma");
    ASSERT_TRUE(focusComesTo("General"));
    press("Tab", "space", "Tab", "space");  // hidden from the taskbar, started at login
    const auto entry = session_.configHome() / "autostart/org.zelkor.Quorvane.desktop";
    EXPECT_TRUE(waitUntil([&] { return std::filesystem::exists(entry); }));
    press("Escape");
    EXPECT_TRUE(goes("page tab", "General"));

    press("ctrl+comma");
    ASSERT_TRUE(focusComesTo("General"));
    EXPECT_FALSE(part("check box", "Hide from the taskbar").isChecked);
    EXPECT_TRUE(part("check box", "Start when I log in").isChecked);
    press("Right", "Tab", "space");  // not noticing any more when nobody is there
    click("push button", "Save");
    EXPECT_TRUE(goes("page tab", "General"));
    press("ctrl+comma", "Right");
    EXPECT_FALSE(part("check box", "Notice when I am away").isChecked);
}

}  // namespace
}  // namespace quorvane
