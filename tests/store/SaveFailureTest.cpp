#include "store/ModelContext.h"
#include "support/Matchers.h"
#include "support/Matching.h"
#include "support/TemporaryStore.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <csignal>
#include <fmt/format.h>
#include <functional>
#include <sys/resource.h>

namespace quorvane {
namespace {

using Record = ActivityRecord;
using Code = StoreError::Code;

/// While it lives, the process can make no file larger than so many bytes.
class FileSizeLimit {
public:
    explicit FileSizeLimit(std::uintmax_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{.rlim_cur = bytes, .rlim_max = before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    void (*handler_)(int);
    rlimit before_{};
};

class SaveFailureTest : public testing::Test {
protected:
    TemporaryStore store;
    ModelContext& context = store.context();
    std::shared_ptr<Record> kept;
    std::shared_ptr<Record> inserted;
    std::shared_ptr<Project> project;

    /// A saved store with one change of each kind pending.
    void SetUp() override {
        kept = aRecord().from("09:00:00").app("kept").in(context);
        const auto removed = aRecord().from("10:00:00").app("removed").in(context);
        context.save();
        kept->endTime = at("09:30:00");
        context.remove(removed);
        project = insertProject(context, "Website");
        inserted = aRecord().from("11:00:00").app("inserted").project(project).in(context);
    }

    void expectRefused(Code code, const std::string& cause) {
        const StoreError error = storeErrorOf([&] { context.save(); });
        EXPECT_EQ(error.code(), code);
        EXPECT_EQ(error.what(), store.file().string() + ": " + cause);
    }
    /// Another program refuses such a statement while `act` runs.
    void whileRefused(const char* statement, const std::function<void()>& act) {
        SQLite::Database other(store.file().string(), SQLite::OPEN_READWRITE);
        other.exec(fmt::format("CREATE TRIGGER refuse BEFORE {} ON activity_record "
                               "BEGIN SELECT RAISE(ABORT, 'refused'); END",
                               statement));
        act();
        other.exec("DROP TRIGGER refuse");
    }
    void expectNothingSaved() {
        EXPECT_TRUE(context.hasChanges());
        EXPECT_THAT(store.anotherContext()->fetch<Record>(),
                    ElementsAre(isRecord("kept", "09:00:00"), isRecord("removed", "10:00:00")));
        // The context goes on as if nothing had happened.
        EXPECT_THAT(context.fetch<Record>(), ElementsAre(kept, inserted));
        EXPECT_THAT(project->activities(), ElementsAre(inserted));
    }

    void expectAllSaved() {
        EXPECT_FALSE(context.hasChanges());
        store.reopen();
        const auto found = store.context().fetch<Record>();
        EXPECT_THAT(found, ElementsAre(isRecord("kept", "09:00:00", "09:30:00"), isRecord("inserted", "11:00:00")));
        EXPECT_EQ(found.back()->project()->name(), "Website");
    }
};

TEST_F(SaveFailureTest, WhileAnotherProgramWritesTheChangesWait) {
    {
        SQLite::Database other(store.file().string(), SQLite::OPEN_READWRITE);
        other.exec("BEGIN IMMEDIATE");
        expectRefused(Code::busy, "another program keeps the store locked");
        expectNothingSaved();
        inserted->windowTitle = "changed after the failure";
        other.exec("ROLLBACK");
    }
    context.save();
    expectAllSaved();
}

TEST_F(SaveFailureTest, OnAFullDiskTheChangesWait) {
    for (int i = 0; i < 200; ++i)
        aRecord().from("12:00:00").app("many").title(std::string(1000, 'x')).in(context);
    {
        const FileSizeLimit limit(std::filesystem::file_size(store.file().string() + "-wal") + 50000);
        expectRefused(Code::diskFull, "the disk is full");
        EXPECT_TRUE(context.hasChanges());
        EXPECT_THAT(store.anotherContext()->fetch<Record>(), SizeIs(2));
        EXPECT_EQ(context.count<Record>(), 202U);
    }
    for (const auto& record : context.fetch<Record>({.predicate = field(&Record::appName) == "many"}))
        context.remove(record);
    context.save();
    expectAllSaved();
}

TEST_F(SaveFailureTest, AFailureHalfWayUndoesTheFirstHalf) {
    whileRefused("UPDATE", [&] {
        for (int attempt = 0; attempt < 3; ++attempt) {
            expectRefused(Code::failed, "refused");  // removals and insertions come before
            expectNothingSaved();
        }
    });
    context.save();
    expectAllSaved();
}

TEST_F(SaveFailureTest, WhatHappensAfterAFailureGoesWithTheNextSave) {
    whileRefused("DELETE", [&] { EXPECT_THROW(context.save(), StoreError); });
    context.remove(inserted);
    context.remove(kept);
    context.remove(project);
    aRecord().from("12:00:00").app("new").in(context);
    context.save();
    store.reopen();
    EXPECT_THAT(store.context().fetch<Record>(), ElementsAre(isRecord("new", "12:00:00")));
    EXPECT_EQ(store.context().count<Project>(), 0U);
}

}  // namespace
}  // namespace quorvane
