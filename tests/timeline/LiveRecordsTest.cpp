#include "timeline/LiveRecords.h"

#include "base/Calendar.h"
#include "store/Database.h"
#include "support/StoreTest.h"

#include <algorithm>
#include <fmt/format.h>
#include <random>
#include <tuple>

namespace quorvane {

void PrintTo(const TimelineRecordSnapshot& record, std::ostream* out) {
    *out << record.displayName() << " from " << describe(record.startTime);
}

namespace {

class LiveRecordsTest : public StoreTest {
protected:
    /// What is found by loading everything and looking at each.
    std::vector<TimelineRecordSnapshot> filtered(DateInterval range, RecordDetail detail) {
        std::vector<TimelineRecordSnapshot> kept;
        for (const auto& record : context().fetch<ActivityRecord>()) {
            const bool reachesIn = !record->endTime() || *record->endTime() > range.start;
            if (record->startTime() < range.end && (record->startTime() >= range.start || reachesIn))
                kept.push_back(snapshotOf(*record, detail));
        }
        std::ranges::sort(kept, {}, [](const auto& record) { return std::tuple(record.startTime, record.id); });
        return kept;
    }
    void settle() { runLoop.runPosted(); }

    LiveRecords live{store.container(), runLoop, console};
};

TEST_F(LiveRecordsTest, ARangeHoldsWhatFilteringEverythingFindsWhateverChangesMeanwhile) {
    std::mt19937 random(11);
    const auto pick = [&](int from, int to) { return std::uniform_int_distribution(from, to)(random); };
    const Calendar calendar("en_US", "America/New_York");
    const Date first = at("2026-02-20T05:00:00Z");  // the clocks go forward on 8 March
    const auto someTime = [&] { return first + pick(0, 30 * 24 * 6) * 10min + pick(-1, 1) * 1s; };
    const auto someEnd = [&](Date start) -> std::optional<Date> {
        switch (pick(0, 9)) {
        case 0: return std::nullopt;
        case 1: return start + 24h + pick(-1, 1) * 1s;
        case 2: return start + pick(1, 20) * 24h;
        case 3: return start - pick(0, 60) * 1min;
        default: return start + pick(0, 180) * 1min;
        }
    };
    const auto aRecordOf = [&](ModelContext& of) {
        const Date start = someTime();
        const auto record = std::make_shared<ActivityRecord>(ActivityRecord::Values{
            .startTime = start, .appName = fmt::format("App {}", pick(0, 9)), .windowTitle = "Draft"});
        record->endTime = someEnd(start);
        of.insert(record);
    };
    RecordDetail detail{};
    const auto go = [&] {
        const Date date = someTime();
        detail = pick(0, 1) == 0 ? RecordDetail::whole : RecordDetail::overview;
        const auto unit = pick(0, 2);
        live.show(unit == 0 ? calendar.day(date) : unit == 1 ? calendar.week(date) : calendar.month(date), detail);
    };
    for (int i = 0; i < 60; ++i)
        aRecordOf(context());
    go();
    for (int step = 0; step < 600; ++step) {
        const auto all = context().fetch<ActivityRecord>();
        const auto& one = all[static_cast<std::size_t>(pick(0, static_cast<int>(all.size()) - 1))];
        switch (pick(0, 9)) {
        case 0: aRecordOf(context()); break;
        case 1:
            if (all.size() > 40) context().remove(one);
            break;
        case 2: one->startTime = someTime(); break;
        case 3: one->endTime = someEnd(one->startTime()); break;
        case 4: one->appName = fmt::format("App {}", pick(0, 9)); break;
        case 5: context().save(); break;
        case 6: runLoop.holdBackground(); break;
        case 7: {
            const auto other = store.anotherContext();
            aRecordOf(*other);
            other->save();
            live.refresh();
            break;
        }
        default: go();
        }
        if (pick(0, 2) > 0) continue;
        settle();  // where the worker is held, it has not read yet
        runLoop.releaseBackground();
        settle();
        ASSERT_EQ(live.state(), LiveRecords::State::read);
        ASSERT_EQ(live.records(), filtered(*live.range(), detail)) << "after step " << step;
    }
}

TEST_F(LiveRecordsTest, NothingIsToldOfChangesElsewhereOrOfWhatIsNotRead) {
    const auto record = aRecord().from("09:00:00").to("10:00:00").app("Editor").in(context());
    const auto elsewhere = aRecord().from("2026-01-02 09:00:00").to("2026-01-02 10:00:00").in(context());
    live.show({at("00:00:00"), at("23:00:00")}, RecordDetail::overview);
    settle();
    int told = 0;
    const auto subscription = live.changed.subscribe([&] { ++told; });
    elsewhere->appName = "Mail";
    record->updatedAt = at("11:00:00");
    record->windowTitle = "another";
    settle();
    EXPECT_EQ(told, 0);
    record->appName = "Mail";
    record->endTime = at("11:00:00");
    settle();
    EXPECT_EQ(told, 1);
}

TEST_F(LiveRecordsTest, WhatCanNotBeSavedIsThereAndAStoreThatCanNotBeReadIsToldOf) {
    live.show({at("2026-01-01 00:00:00"), at("2026-01-02 00:00:00")}, RecordDetail::whole);
    Database({.file = store.file()})
        .execute("CREATE TRIGGER full BEFORE INSERT ON activity_record BEGIN SELECT RAISE(ABORT, 'full'); END");
    aRecord().from("09:00:00").app("Editor").in(context());
    live.show({at("00:00:00"), at("23:00:00")}, RecordDetail::whole);
    settle();
    EXPECT_EQ(live.records().size(), 1U);
    Database({.file = store.file()}).execute("DROP TRIGGER full");
    context().save();

    const auto away = store.file().string() + ".away";
    std::filesystem::rename(store.file(), away);
    live.refresh();
    settle();
    EXPECT_EQ(live.state(), LiveRecords::State::read) << "what was read still holds";
    live.show({at("08:00:00"), at("23:00:00")}, RecordDetail::whole);
    settle();
    EXPECT_EQ(live.state(), LiveRecords::State::failed);
    EXPECT_THAT(live.failure(), HasSubstr(store.file().string()));
    std::filesystem::rename(away, store.file());
    live.refresh();
    settle();
    EXPECT_EQ(live.state(), LiveRecords::State::read);
    EXPECT_EQ(live.records().size(), 1U);
}

}  // namespace
}  // namespace quorvane
