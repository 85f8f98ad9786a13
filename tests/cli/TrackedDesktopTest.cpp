#include "base/Iso8601.h"
#include "base/Json.h"
#include "cli/CliFixture.h"
#include "desktop/support/ChildProcess.h"
#include "desktop/support/DesktopSession.h"
#include "desktop/support/TestWindow.h"
#include "desktop/support/Waiting.h"
#include "platform/linux/loop/QtRunLoop.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fmt/format.h>
#include <fstream>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

namespace quorvane {
namespace {

/// The companion command tracks real windows on an X server.
class TrackedDesktopTest : public CliTest {
protected:
    TrackedDesktopTest() {
        for (const char* name :
             {"DISPLAY", "XAUTHORITY", "DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS", "XDG_RUNTIME_DIR"})
            if (const char* value = std::getenv(name)) setting_.environment[name] = value;
    }

    /// Oldest first: "application: category, tags, project, source".
    std::vector<std::string> classifications() {
        std::vector<std::string> found;
        for (const Json& record : parseJson(outputOf({"records", "--json"})).value_or(Json()))
            found.insert(found.begin(), fmt::format("{}: {} {} {} {}", record["app_name"].get<std::string>(),
                                                    record["category"].dump(), record["tags"].get<std::string>(),
                                                    record["project_id"].is_null() ? "-" : "project",
                                                    record["source"].get<std::string>()));
        return found;
    }

    /// Oldest first: "application: document".
    std::vector<std::string> documents() {
        std::vector<std::string> found;
        for (const Json& record : parseJson(outputOf({"records", "--json"})).value_or(Json()))
            found.insert(found.begin(), record["app_name"].get<std::string>() + ": " + record["document_path"].dump());
        return found;
    }

    platform::QtRunLoop runLoop_;  // what waits serves it
    DesktopSession session_;
};

TEST_F(TrackedDesktopTest, RecordsCarryWhatBuiltInAndOwnRulesSayOfThem) {
    EXPECT_EQ(outputOf({"rules", "import-templates"}), "{\"imported\":146,\"skipped\":0}\n");
    std::string project = outputOf({"projects", "add", "--name", "Accounts"});
    project.pop_back();
    ASSERT_EQ(run({"rules", "add", "--name", "Invoices", "--field", "windowTitle", "--operator", "contains", "--value",
                   "INVOICE", "--project", project, "--tag", "money"})
                  .status,
              0);

    TestWindow papers({.instance = "zotero", .wmClass = "Zotero", .title = "Papers"});
    ASSERT_TRUE(waitUntil([&] { return papers.hasFocus(); }));
    ProgramRun tracker(QUORVANE_CLI, {"--store", store().string(), "track"}, setting_);
    ASSERT_TRUE(tracker.hasWritten("ActivityTracker: Created new record for Zotero"));
    TestWindow design({.instance = "figma", .wmClass = "Figma", .title = "invoice.fig"});
    design.activate();
    ASSERT_TRUE(tracker.hasWritten("ActivityTracker: Created new record for Figma"));
    TestWindow plain({.instance = "editor", .wmClass = "Editor", .title = "chapter one"});
    plain.activate();
    ASSERT_TRUE(tracker.hasWritten("ActivityTracker: Created new record for Editor"));
    tracker.sendSignal(SIGINT);
    EXPECT_EQ(tracker.wait().status, 0);

    EXPECT_THAT(classifications(),
                ElementsAre("Zotero: \"学习\" learning - system|rule:Study and research: Zotero",
                            "Figma: \"工作\" money,design project system|rule:Invoices|rule:Design: Figma",
                            "Editor: null  - system"));
}

TEST_F(TrackedDesktopTest, EndsInGoodOrderOnSignalsAndWithTheDisplay) {
    for (const int number : {SIGINT, SIGTERM, 0}) {
        SCOPED_TRACE(number);
        ProgramRun tracker(QUORVANE_CLI, {"--store", store().string(), "track"}, setting_);
        ASSERT_TRUE(tracker.hasWritten("ActivityTracker: Starting tracking with modelContext: true\n"));
        if (number != 0)
            tracker.sendSignal(number);
        else
            session_.killServer();
        const auto result = tracker.wait();
        EXPECT_EQ(result.status, number == 0 ? 1 : 0);
        EXPECT_EQ(result.err.find("has gone away. Start Quorvane again") != std::string::npos, number == 0);
    }
}

TEST_F(TrackedDesktopTest, LeavesTitlesOutOfTheJournal) {
    TestWindow window({.instance = "editor", .wmClass = "Editor", .title = "secret.txt"});
    ASSERT_TRUE(waitUntil([&] { return window.hasFocus(); }));
    const auto journal = folder_ / "journal";
    const int file = ::open(journal.c_str(), O_CREAT | O_WRONLY | O_APPEND | O_CLOEXEC, 0600);
    struct stat status {};
    ASSERT_EQ(::fstat(file, &status), 0);
    setting_.environment["JOURNAL_STREAM"] = fmt::format("{}:{}", status.st_dev, status.st_ino);
    setting_.inChild = [file] {
        for (const int stream : {STDOUT_FILENO, STDERR_FILENO})
            ::dup2(file, stream);
    };
    EXPECT_EQ(run({"track", "--for", "2"}).status, 0);
    ::close(file);
    std::ifstream stream(journal);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_THAT(text, AllOf(ContainsRegex("opened  Editor\n"), Not(HasSubstr("secret"))));
}

TEST_F(TrackedDesktopTest, RecordsCarryTheDocumentOfAnEditorAndTheDirectoryOfATerminal) {
    const auto file = folder_ / "notes.txt";
    std::ofstream(file) << "notes\n";
    ChildProcess editor({"mousepad", file.string()});
    ProgramRun tracker(QUORVANE_CLI, {"--store", store().string(), "track"}, setting_);
    // A worker brings the document after the record has begun.
    ASSERT_TRUE(tracker.hasWritten("成功获取文档信息 - 标题: " + file.string()));
    ChildProcess terminal({"xterm", "-T", "shell", "-e", "cd " + folder_.path().string() + " && exec sh"});
    ASSERT_TRUE(tracker.hasWritten("成功获取文档信息 - 标题: shell"));
    tracker.sendSignal(SIGINT);
    EXPECT_EQ(tracker.wait().status, 0);
    EXPECT_THAT(documents(), ElementsAre("Mousepad: " + Json(file.string()).dump(),
                                         "XTerm: " + Json(folder_.path().string()).dump()));
}

TEST_F(TrackedDesktopTest, AStepOfTheWallClockIsNoTimeOfAnybody) {
    const auto offset = folder_ / "offset";
    const auto stepTo = [&](const char* seconds) {
        std::ofstream(folder_ / "next") << seconds << "\n";
        std::filesystem::rename(folder_ / "next", offset);
    };
    stepTo("+0");
    setting_.environment.insert({{"LD_PRELOAD", "/usr/$LIB/faketime/libfaketime.so.1"},
                                 {"FAKETIME_TIMESTAMP_FILE", offset.string()},
                                 {"FAKETIME_NO_CACHE", "1"},
                                 {"DONT_FAKE_MONOTONIC", "1"}});
    const Seconds begin = uptime();
    ProgramRun tracker(QUORVANE_CLI, {"--store", store().string(), "track"}, setting_);
    setting_.environment.erase("LD_PRELOAD");
    std::vector<std::unique_ptr<TestWindow>> windows;
    for (const auto& [name, step] :
         {std::pair("One", "+0"), {"Two", "+7200"}, {"Three", "-10800"}, {"Four", "+260000"}}) {
        stepTo(step);
        windows.push_back(
            std::make_unique<TestWindow>(TestWindow::Properties{.instance = name, .wmClass = name, .title = name}));
        windows.back()->activate();
        ASSERT_TRUE(tracker.hasWritten(fmt::format("ActivityTracker: Created new record for {}", name)));
    }
    tracker.sendSignal(SIGTERM);
    EXPECT_EQ(tracker.wait().status, 0);
    const Seconds passed = uptime() - begin;

    Seconds recorded = 0s;
    const auto records = parseJson(outputOf({"records", "--json"})).value_or(Json());
    for (const Json& record : records)
        recorded += *parseIso8601(record["end_time"].get<std::string>()) -
                    *parseIso8601(record["start_time"].get<std::string>());
    EXPECT_GE(records.size(), 4U);
    EXPECT_LT(recorded, passed + 4s) << "a record has one second at least";
}

// Two seconds are the bound of one switch with everything hung: AT-SPI 0.3 s a question round, automation below one.
TEST_F(TrackedDesktopTest, AFrozenApplicationHoldsUpNothing) {
    ChildProcess editor({"mousepad"});
    ProgramRun tracker(QUORVANE_CLI, {"--store", store().string(), "track"}, setting_);
    ASSERT_TRUE(tracker.hasWritten("ActivityTracker: Created new record for Mousepad"));
    TestWindow other({.instance = "other", .wmClass = "Other", .title = "chapter one"});
    other.activate();
    ASSERT_TRUE(tracker.hasWritten("ActivityTracker: Created new record for Other"));
    TestWindow frozen({.instance = "frozen", .wmClass = "Frozen", .title = "stuck", .pid = editor.pid()});
    editor.send(SIGSTOP);
    frozen.activate();
    const Seconds begin = uptime();
    ASSERT_TRUE(tracker.hasWritten("ActivityTracker: Created new record for Frozen"));
    EXPECT_LT(uptime() - begin, 4s);  // half of it for a busy machine
    other.activate();
    tracker.sendSignal(SIGINT);
    EXPECT_EQ(tracker.wait().status, 0);
    editor.send(SIGCONT);
    EXPECT_THAT(documents(), Contains(StartsWith("Frozen: ")));
}

}  // namespace
}  // namespace quorvane
