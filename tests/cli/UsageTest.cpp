#include "cli/CliFixture.h"

namespace quorvane {
namespace {

using UsageTest = CliTest;

TEST_F(UsageTest, AnswersWrongUsageWithOneLineAndTouchesNothing) {
    const std::pair<Arguments, const char*> rows[] = {
        {{}, "a command is required"},
        {{"nosuch"}, "there is no command nosuch"},
        {{"nosuch", "--help"}, "there is no command nosuch"},
        {{"--help", "nosuch"}, "there is no command nosuch"},
        {{"projects", "nosuch", "--help"}, "there is no command projects nosuch"},
        {{"pause", "--store", "x"}, "--store: the application that is running has its own"},
        {{"show", "--now", "2026-03-04T15:00:00Z"}, "--now: the application"},
        {{"work-hours", "--at", "noon"}, "\"noon\" is no instant"},
        {{"--nosuch"}, "there is no option --nosuch"},
        {{"dump", "--nosuch"}, "--nosuch"},
        {{"dump", "extra"}, "extra"},
        {{"dump", "-o"}, "--output"},
        {{"--store"}, "--store"},
        {{"load"}, "FILE is required"},
        {{"load", "a", "b"}, "b"},
        {{"--now", "yesterday", "status"}, "\"yesterday\" is no instant"},
        {{"--now", "2026-03-04T15:00:00", "status"}, "is no instant"},
        {{"records", "--limit", "-1"}, "\"-1\" is no whole number"},
        {{"records", "--limit", "1.5"}, "\"1.5\" is no whole number"},
        {{"records", "--from", "2026-02-30T00:00:00Z"}, "is no instant"},
        {{"records", "--project", "Web"}, "\"Web\" is no UUID"},
        {{"export-csv", "--project", "Web"}, "\"Web\" is no UUID"},
        {{"export-csv", "--to", "tomorrow"}, "is no instant"},
        {{"track", "--for", "-1"}, "\"-1\" is no number of seconds"},
        {{"track", "--for", "nan"}, "\"nan\" is no number of seconds"},
        {{"track", "--for", "1e9"}, "\"1e9\" is no number of seconds"},
        {{"overlaps", "--date", "2026-02-30"}, "\"2026-02-30\" is no day"},
        {{"stats", "--date", "today"}, "\"today\" is no day"},
        {{"praise", "--date", "today"}, "\"today\" is no day"},
        {{"praise", "--category", "Humor"}, "\"Humor\" is none of productivity, creativity, "},
        {{"praise", "--language", "english"}, "\"english\" is none of zh, en, fr, "},
        {{"week", "--date", "2026-02-30"}, "--date"},
        {{"month", "--date", "March"}, "--date"},
        {{"week", "--column-width", "-1"}, "--column-width"},
        {{"week", "--column-width", "nan"}, "--column-width"},
        {{"month", "--column-width", "100"}, "--column-width"},
        {{"projects"}, "projects needs a command"},
        {{"projects", "nosuch"}, "there is no command projects nosuch"},
        {{"projects", "--nosuch"}, "there is no option --nosuch"},
        {{"projects", "add"}, "--name is required"},
        {{"projects", "add", "--name", "Web", "--rate", "-1"}, "\"-1\" is no number"},
        {{"projects", "add", "--name", "Web", "--rate", "inf"}, "\"inf\" is no number"},
        {{"projects", "add", "--name", "Web", "--color", "gray"}, "\"gray\" is none of mint, sky, "},
        {{"projects", "edit", "C0FEA20C-DB32-40C6-A0CC-CF6118205BB6"}, "no option that says what to change"},
        {{"projects", "archive", "Web"}, "\"Web\" is no UUID"},
        {{"rules", "remove"}, "ID is required"},
        {{"rules", "add", "--field", "title"}, "\"title\" is none of appBundleId, appName, "},
        {{"rules", "add", "--operator", "is"}, "\"is\" is none of contains, equals, prefix, regex"},
        {{"rules", "add", "--priority", "1.5"}, "\"1.5\" is no whole number"},
        {{"categories", "add"}, "NAME is required"},
        {{"browser"}, "browser needs a command"},
        {{"desktop", "instal"}, "there is no command desktop instal"},
        {{"browser", "install", "chromium"}, "chromium"},
    };
    for (const auto& [arguments, cause] : rows) {
        EXPECT_THAT(runBare(arguments), isRefused(2, HasSubstr(cause))) << testing::PrintToString(arguments);
        EXPECT_THAT(names(), IsEmpty());
    }
}

TEST_F(UsageTest, ShowsHelpForTheProgramAndEachCommand) {
    const auto help = runBare({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.err, "");
    for (const char* command :
         {"dump",    "load",     "records",  "export-csv", "status",     "sanitize",   "track", "doctor",
          "cleanup", "overlaps", "projects", "rules",      "categories", "classify",   "stats", "praise",
          "browser", "desktop",  "pause",    "start",      "show",       "work-hours", "trash"}) {
        SCOPED_TRACE(command);
        EXPECT_THAT(help.out, HasSubstr(command));
        const auto result = runBare({command, "--help"});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
        EXPECT_THAT(result.out, HasSubstr(std::string("Usage: quorvane-cli ") + command));
    }
}

TEST_F(UsageTest, TakesGlobalOptionsOnEitherSideOfTheCommand) {
    load(recordLine("A", "2026-03-04T15:00:00Z", "2026-03-04T16:00:00Z"));
    const std::string file = store().string();
    const auto expected = runBare({"--store", file, "--now", "2026-03-04T17:00:00Z", "--json", "status"});
    EXPECT_EQ(expected.status, 0);
    EXPECT_THAT(expected.out, HasSubstr("\"today_seconds\":3600.0"));
    EXPECT_EQ(runBare({"status", "--json", "--store", file, "--now", "2026-03-04T17:00:00Z"}).out, expected.out);
    EXPECT_EQ(runBare({"--json", "status", "--now=2026-03-04T18:00:00+01:00", "--store=" + file}).out, expected.out);
}

TEST_F(UsageTest, LooksForTheApplicationsOwnStoreWhereNoneIsNamed) {
    setting_.environment["XDG_DATA_HOME"] = (folder_ / "data").string();
    for (const Arguments& reading : {Arguments{"dump"}, {"status"}, {"records"}, {"work-hours"}})
        EXPECT_THAT(runBare(reading), isRefused(1, AllOf(HasSubstr("nothing is recorded yet"),
                                                         HasSubstr(folder_ / "data/quorvane/quorvane.sqlite"))));
    setting_.environment["XDG_DATA_HOME"] = "relative";
    const auto own = folder_ / ".local/share/quorvane/quorvane.sqlite";
    EXPECT_THAT(runBare({"dump"}).err, isRefusal(HasSubstr(own.string())));
    setting_.input = recordLine("A", "2026-03-04T15:00:00Z", "2026-03-04T16:00:00Z");
    EXPECT_EQ(runBare({"load", "-"}).status, 0);
    EXPECT_TRUE(std::filesystem::exists(own));
}

TEST_F(UsageTest, TheApplicationItselfExplainsItsFewArgumentsAndRefusesOthers) {
    const auto runApplication = [&](const char* argument) { return ProgramRun(QUORVANE, {argument}, setting_).wait(); };
    EXPECT_EQ(runApplication("--help").status, 0);
    EXPECT_THAT(runApplication("--help").out, AllOf(HasSubstr("--background"), HasSubstr("quorvane-cli")));
    EXPECT_THAT(runApplication("--version").out, MatchesRegex("quorvane [0-9.]+\n"));
    EXPECT_THAT(runBare({"--version"}).out, MatchesRegex("quorvane-cli [0-9.]+\n"));
    for (const char* argument : {"status", "-x", ""}) {
        SCOPED_TRACE(argument);
        const auto result = runApplication(argument);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err,
                  "quorvane: unknown argument \"" + std::string(argument) + "\"; --help shows what it takes\n");
    }
}

}  // namespace
}  // namespace quorvane
