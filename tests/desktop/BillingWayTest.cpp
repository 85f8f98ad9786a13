#include "base/Text.h"
#include "desktop/support/ApplicationScreen.h"
#include "desktop/support/TestWindow.h"
#include "desktop/support/Waiting.h"
#include "support/Builders.h"
#include "support/Matching.h"

namespace quorvane {
namespace {

/// A freelancer's afternoon. A rule has given an hour in the browser to the project Harbour and isn't sure of it.
class BillingWayTest : public ApplicationScreen {
protected:
    BillingWayTest() {
        auto store = openStore();
        auto& context = store.mainContext();
        insertRecord(context, "Drawing", 12, 13);
        const auto doubtful = insertRecord(context, "Browser", 13, 13.75);
        doubtful->project = insertProject(context, "Harbour");
        doubtful->confidence = 0.6;
        doubtful->setBillingStatus(BillingStatus::review);
        context.save();
    }

    [[nodiscard]] std::string billingStatusOf(const std::string& app) const {
        auto store = openStore();
        for (const auto& record : store.mainContext().fetch<ActivityRecord>({}))
            if (record->appName() == app) return record->billingStatus();
        return "";
    }

    void recordAnApplication() {
        const auto isRecorded = [&] {
            auto store = openStore();
            const auto records = store.mainContext().fetch<ActivityRecord>({});
            return std::ranges::any_of(records, [](const auto& record) { return record->windowTitle() == "Sketch 7"; });
        };
        TestWindow pencil({.instance = "pencil", .wmClass = "Pencil", .title = "Sketch 7"});
        pencil.activate();
        EXPECT_TRUE(waitUntil(isRecorded, 15s));
        pencil.destroy();
        xdotool({"windowactivate", "--sync", std::to_string(window())});
        press("ctrl+shift+p");  // from here on nothing in the store changes by itself
        EXPECT_TRUE(comes("label", "Paused"));
    }

    void assignToANewProject() {
        click("list item", "Drawing, 12:00 to 13:00");
        press("a");
        EXPECT_TRUE(comes("alert message", "Selected time 12:00 to 13:00"));
        click("text", "Name a new project, or choose one above");
        type("Lighthouse");
        click("push button", "Create and Assign");
        EXPECT_TRUE(comes("list item", "Project Lighthouse, 12:00 to 13:00"));
    }

    void review() {
        press("ctrl+2");
        EXPECT_TRUE(comes("label", "1 record to review"));
        click("push button", "Review Records");
        EXPECT_TRUE(comes("dialog", "Review queue"));
        press("b");
        EXPECT_TRUE(waitUntil([&] { return billingStatusOf("Browser") == "billable"; }));
        click("push button", "Done");
        EXPECT_TRUE(goes("dialog", "Review queue"));
    }

    void setRate(const std::string& project, const std::string& rate, const std::string& client) {
        click("cell", project, 2);
        EXPECT_TRUE(comes("dialog", "Project and rate"));
        click("text", "Client name");
        type(client);
        click("spin box", "Hourly rate", 3);
        press("ctrl+a");
        type(rate);
        press("Tab");
        click("push button", "Done");
        EXPECT_TRUE(goes("dialog", "Project and rate"));
    }

    /// Answers the dialog that asks for a file.
    [[nodiscard]] std::string saveAs(const std::string& name) {
        const auto file = session_.dataHome() / name;
        EXPECT_TRUE(comes("push button", "Save"));
        EXPECT_TRUE(focusComesTo("File name:"));
        press("ctrl+a");
        type(file.string());
        press("Return");
        EXPECT_TRUE(waitUntil([&] { return std::filesystem::exists(file); }));
        return contentOf(file);
    }

    [[nodiscard]] std::string companion(std::vector<std::string> arguments) {
        const auto result = ProgramRun(QUORVANE_CLI, arguments, setting_).wait();
        EXPECT_EQ(result.status, 0) << result.err;
        return result.out;
    }

    /// The document, without the line end that the command adds.
    [[nodiscard]] std::string report(const std::string& format) {
        auto document = companion({"report", "--format", format});
        if (!document.empty()) document.pop_back();
        return document;
    }

    [[nodiscard]] std::string clipboard() {
        return ProgramRun("/usr/bin/xclip", {"-selection", "clipboard", "-o"}, setting_).wait().out;
    }
};

/// A document says when it was made; without that line.
std::string undated(const std::string& document) {
    std::string kept;
    for (const auto& line : text::split(document, '\n'))
        if (!line.starts_with("- Created on")) kept += line + "\n";
    return kept;
}

TEST_F(BillingWayTest, LeadsFromARecordToABillThatTheCompanionCommandPrintsToo) {
    start();
    recordAnApplication();
    assignToANewProject();
    review();
    setRate("Harbour", "80", "Northlight");
    setRate("Lighthouse", "95.50", "Orchard");
    EXPECT_TRUE(comes("cell", "$60.00"));
    EXPECT_TRUE(comes("cell", "$95.50"));

    press("ctrl+p");
    EXPECT_TRUE(comes("dialog", "Preview Bill"));
    click("push button", "Copy");
    const auto pack = report("markdown");
    EXPECT_THAT(pack, HasSubstr("| Lighthouse | Orchard | 1.00 h | 0.00 h | USD 95.50/h | USD 95.50 |"));
    EXPECT_TRUE(waitUntil([&] { return undated(clipboard()) == undated(pack); })) << clipboard();
    press("Escape");
    click("push button", "Copy E-mail");
    EXPECT_TRUE(comes("label", "Copied"));
    press("Return");
    EXPECT_EQ(clipboard(), report("email"));

    // What was settled with little confidence still waits, and doesn't stop anybody.
    press("ctrl+e");
    click("push button", "Export Anyway");
    EXPECT_EQ(undated(saveAs("bill.md")), undated(pack));

    press("ctrl+4");
    click("push button", "Export CSV");
    const auto table = saveAs("records.csv");
    EXPECT_THAT(table, HasSubstr("Sketch 7"));
    EXPECT_EQ(table, companion({"export-csv"}));
}

}  // namespace
}  // namespace quorvane
