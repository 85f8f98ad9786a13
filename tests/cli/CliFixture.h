#pragma once

#include "cli/ProgramRun.h"
#include "support/Matching.h"
#include "support/TemporaryFolder.h"

#include <set>
#include <string>
#include <vector>

namespace quorvane {

/// Runs the companion command in an empty home of its own, in UTC and American English unless a test says otherwise.
class CliTest : public testing::Test {
protected:
    using Arguments = std::vector<std::string>;

    CliTest();

    /// Runs the command to its end, with `--store store.sqlite` in front.
    [[nodiscard]] ProgramResult run(const Arguments& arguments);

    /// The same without a store named.
    [[nodiscard]] ProgramResult runBare(const Arguments& arguments);

    /// Standard output of a command that has to succeed without a word on standard error.
    [[nodiscard]] std::string outputOf(const Arguments& arguments);

    /// The same; it has to be what is in the file of tests/cli/data.
    void expectOutput(const Arguments& arguments, const std::string& file);

    /// The command ends with this status and nothing but one line of standard error, which names the cause.
    void expectRefusal(const Arguments& arguments, int status, const std::string& cause);

    /// Loads the lines, which has to succeed.
    void load(const std::string& lines);

    [[nodiscard]] std::filesystem::path store() const { return folder_ / "store.sqlite"; }

    /// The names in the folder.
    [[nodiscard]] std::set<std::string> names() const;

    TemporaryFolder folder_;
    ProgramSetting setting_;
};

/// One line that names the program and what `cause` matches.
[[nodiscard]] testing::Matcher<std::string> isRefusal(const testing::Matcher<std::string>& cause);

/// What a command leaves behind that ends with the status and nothing but such a line.
[[nodiscard]] testing::Matcher<ProgramResult> isRefused(const testing::Matcher<int>& status,
                                                        const testing::Matcher<std::string>& cause);

/// A record as a line to load.
[[nodiscard]] std::string recordLine(const std::string& id, const std::string& start, const std::string& end,
                                     const std::string& more = {});

}  // namespace quorvane
