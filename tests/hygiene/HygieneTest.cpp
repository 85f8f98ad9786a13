#include "hygiene/HygieneTest.h"

#include "support/Matchers.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

/// Application, start and end of a record as tests write it.
std::tuple<std::string, std::string, std::optional<std::string>> partsOf(const std::string& record) {
    const auto blank = record.find(' ');
    const auto to = record.find(" to ");
    return {record.substr(0, blank), record.substr(blank + 1, to == std::string::npos ? to : to - blank - 1),
            to == std::string::npos ? std::nullopt : std::optional(record.substr(to + 4))};
}

}  // namespace

void HygieneTest::given(const std::vector<std::string>& records) {
    for (const std::string& record : records) {
        const auto [app, start, end] = partsOf(record);
        auto builder = aRecord().app(app).from(start);
        if (end) builder.to(*end);
        const auto made = builder.in(context());
        if (app == "-") made->appName = std::nullopt;
    }
    context().save();
}

std::vector<std::shared_ptr<ActivityRecord>> HygieneTest::expectStored(const std::vector<std::string>& records) {
    std::vector<testing::Matcher<std::shared_ptr<ActivityRecord>>> expected;
    for (const std::string& record : records) {
        const auto [app, start, end] = partsOf(record);
        expected.push_back(isRecord(app, start, end));
    }
    auto found = stored();
    EXPECT_THAT(found, ElementsAreArray(expected));
    return found;
}

std::shared_ptr<ActivityRecord> HygieneTest::add(const std::string& app, std::string_view start, std::string_view end) {
    auto builder = aRecord().app(app).from(start);
    if (!end.empty()) builder.to(end);
    auto record = builder.in(context());
    context().save();
    return record;
}

std::shared_ptr<ActivityRecord> HygieneTest::add(const std::string& app, Date start, Seconds duration) {
    auto record = aRecord().app(app).make();
    record->startTime = start;
    record->endTime = start + duration;
    context().insert(record);
    context().save();
    return record;
}

std::vector<std::shared_ptr<ActivityRecord>> HygieneTest::stored() {
    return store.anotherContext()->fetch<ActivityRecord>({.sort = {ascending(&ActivityRecord::startTime)}});
}

std::vector<std::string> HygieneTest::newLines() {
    auto lines = console.lines();
    console.clear();
    for (std::string& line : lines) {
        if (line.starts_with(prefix_))
            line.erase(0, prefix_.size());
        else
            EXPECT_TRUE(line.starts_with("  ") || line.starts_with("DataCleanupService: ")) << line;
    }
    return lines;
}

void HygieneTest::refuse(const std::string& statement) {
    otherProgram_.execute(fmt::format("CREATE TRIGGER refuse_{0} BEFORE {0} ON activity_record "
                                      "BEGIN SELECT RAISE(ABORT, 'refused'); END",
                                      statement));
}

void HygieneTest::allow(const std::string& statement) {
    otherProgram_.execute(fmt::format("DROP TRIGGER refuse_{}", statement));
}

void HygieneTest::hideRecords() {
    otherProgram_.execute("ALTER TABLE activity_record RENAME TO hidden_record");
}

}  // namespace quorvane
