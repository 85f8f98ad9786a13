#include "cloud/RecordSessionContract.h"

#include <fmt/format.h>
#include <variant>

namespace quorvane {

using namespace platform;
using enum DatabaseScope;

namespace {

CloudRecord record(const std::string& name, std::map<std::string, CloudRecord::Value> values = {}) {
    return {.recordType = "ActivityRecord", .recordName = name, .values = std::move(values)};
}

Date date(std::int64_t microseconds) {
    return dateFromMicroseconds(1'772'636'400'000'000 + microseconds);
}

std::vector<std::string> names(const QueryPage& page) {
    std::vector<std::string> result;
    for (const auto& row : page.rows)
        result.push_back(std::get<CloudRecord>(row).recordName);
    return result;
}

CloudFailure::Kind kindOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const CloudFailure& failure) {
        return failure.kind();
    }
    ADD_FAILURE() << "it did not fail";
    return CloudFailure::Kind::refused;
}

}  // namespace

void RecordSessionContract::SetUp() {
    container_ = GetParam().make();
    if (!container_) GTEST_SKIP() << "there is no such cloud on this machine";
    session_ = container_->newSession();
}

std::string cloudName(const testing::TestParamInfo<CloudMaker>& maker) {
    return maker.param.name;
}

TEST_P(RecordSessionContract, ARecordComesBackAsItWent) {
    const CloudRecord whole = record("A", {{"title", "漢字 \"quoted\" \\ \n\t\x01 {a,b}"},
                                           {"", "key without a name"},
                                           {"empty", ""},
                                           {"updatedAt", date(1)},
                                           {"early", dateFromMicroseconds(-1)},
                                           {"confidence", 0.1},
                                           {"large", 1e300},
                                           {"isActive", true},
                                           {"isOld", false},
                                           {"none", std::vector<std::string>{}},
                                           {"ids", std::vector<std::string>{"a\"b", "", "工作"}}});
    EXPECT_THAT(session_->modify(privateData, {whole}), ElementsAre(SaveResult{"A"}));
    EXPECT_EQ(container_->newSession()->record(privateData, "A"), whole);
    EXPECT_THAT(session_->query(privateData, {.recordType = "ActivityRecord"}).rows, ElementsAre(whole));
    EXPECT_EQ(session_->record(privateData, "B"), std::nullopt);
}

TEST_P(RecordSessionContract, KeysThatComeReplaceTheirValuesAndOthersStay) {
    for (int i = 0; i < 2; ++i)
        EXPECT_THAT(session_->modify(privateData, {record("A", {{"url", "old"}, {"tags", "a"}})}),
                    ElementsAre(SaveResult{"A"}));
    EXPECT_THAT(session_->modify(privateData, {record("A", {{"url", "new"}, {"source", "rule"}})}),
                ElementsAre(SaveResult{"A"}));
    EXPECT_EQ(session_->record(privateData, "A"), record("A", {{"url", "new"}, {"tags", "a"}, {"source", "rule"}}));
    EXPECT_EQ(session_->count(privateData, "ActivityRecord"), 1U);
}

TEST_P(RecordSessionContract, ARefusedRecordLeavesTheOthersSavedAndAnswersStandInOrder) {
    ASSERT_THAT(session_->modify(privateData, {record("C", {{"url", "kept"}})}), ElementsAre(SaveResult{"C"}));
    CloudRecord other = record("C", {{"url", "lost"}});
    other.recordType = "Rule";
    const auto results = session_->modify(privateData, {record("D"), other, record("B")});
    EXPECT_THAT(results, ElementsAre(SaveResult{"D"},
                                     AllOf(testing::Field(&SaveResult::recordName, "C"),
                                           testing::Field(&SaveResult::error, Not(std::nullopt))),
                                     SaveResult{"B"}));
    EXPECT_EQ(session_->record(privateData, "C"), record("C", {{"url", "kept"}}));
    EXPECT_EQ(session_->count(privateData, "ActivityRecord"), 3U);
    EXPECT_EQ(session_->count(privateData, "Rule"), 0U);
}

TEST_P(RecordSessionContract, OfTwoRecordsWithOneNameInABatchTheLastCounts) {
    EXPECT_THAT(session_->modify(privateData, {record("A", {{"url", "first"}}), record("A", {{"url", "last"}})}),
                ElementsAre(SaveResult{"A"}, SaveResult{"A"}));
    EXPECT_EQ(session_->record(privateData, "A"), record("A", {{"url", "last"}}));
    EXPECT_THAT(session_->modify(privateData, {}), IsEmpty());
}

TEST_P(RecordSessionContract, PagesGoFromTheNewestToTheOldestAndThenThoseWithoutADate) {
    std::vector<CloudRecord> records;
    records.reserve(9);
    for (int i = 0; i < 7; ++i)
        records.push_back(record(fmt::format("R{}", i), {{"createdAt", date(i / 2)}}));
    records.push_back(record("undated"));
    records.push_back(record("misdated", {{"createdAt", "2099"}}));
    (void)session_->modify(privateData, records);

    std::vector<std::vector<std::string>> pages;
    RecordQuery query{.recordType = "ActivityRecord", .limit = 3};
    do {
        const QueryPage page = session_->query(privateData, query);
        pages.push_back(names(page));
        query.after = page.next;
    } while (query.after && pages.size() < 10);
    EXPECT_THAT(pages, ElementsAre(ElementsAre("R6", "R5", "R4"), ElementsAre("R3", "R2", "R1"),
                                   ElementsAre("R0", "undated", "misdated")));
}

TEST_P(RecordSessionContract, AQueryFindsTheRecordsThatHaveItsValues) {
    (void)session_->modify(privateData, {record("A", {{"user", "u1"}, {"isActive", true}, {"at", date(1)}}),
                                         record("B", {{"user", "u1"}, {"isActive", false}}),
                                         record("C", {{"user", "u2"}, {"isActive", "true"}})});
    const auto found = [&](const std::map<std::string, CloudRecord::Value>& equals) {
        return names(session_->query(privateData, {.recordType = "ActivityRecord", .equals = equals}));
    };
    EXPECT_THAT(found({{"user", "u1"}}), ElementsAre("B", "A"));
    EXPECT_THAT(found({{"user", "u1"}, {"isActive", true}}), ElementsAre("A"));
    EXPECT_THAT(found({{"at", date(1)}}), ElementsAre("A"));
    EXPECT_THAT(found({{"user", "' OR true --"}}), IsEmpty());
    EXPECT_THAT(session_->query(privateData, {.recordType = "Rule"}).rows, IsEmpty());
}

TEST_P(RecordSessionContract, ADeletedRecordIsGoneAndCannotBeDeletedAgain) {
    (void)session_->modify(privateData, {record("A"), record("B")});
    session_->deleteRecord(privateData, "A");
    EXPECT_EQ(session_->record(privateData, "A"), std::nullopt);
    EXPECT_EQ(session_->count(privateData, "ActivityRecord"), 1U);
    EXPECT_EQ(kindOf([&] { session_->deleteRecord(privateData, "A"); }), CloudFailure::Kind::recordNotFound);
}

TEST_P(RecordSessionContract, WhatIsPublishedAndWhatIsKeptDoNotMeet) {
    const CloudRecord share{"ActivityShare", "token", {{"isActive", true}, {"title", "published"}}};
    const CloudRecord kept{"ActivityShare", "token", {{"title", "kept"}}};
    EXPECT_THAT(session_->modify(publicData, {share}), ElementsAre(SaveResult{"token"}));
    EXPECT_THAT(session_->modify(privateData, {kept}), ElementsAre(SaveResult{"token"}));
    EXPECT_EQ(session_->record(publicData, "token"), share);
    EXPECT_THAT(session_->query(publicData, {.recordType = "ActivityShare"}).rows, ElementsAre(share));
    session_->deleteRecord(publicData, "token");
    EXPECT_EQ(session_->record(privateData, "token"), kept);
}

TEST_P(RecordSessionContract, ACancelledSessionAnswersNothingAnyMoreAndOthersDo) {
    std::string reason;
    EXPECT_EQ(session_->accountStatus(&reason), AccountStatus::available);
    EXPECT_EQ(reason, "");
    (void)session_->modify(privateData, {record("A")});
    for (const auto& session : {session_, container_->newSession()}) {  // the second was never opened
        session->cancel();
        session->cancel();
        EXPECT_EQ(kindOf([&] { (void)session->count(privateData, "ActivityRecord"); }), CloudFailure::Kind::cancelled);
        EXPECT_EQ(kindOf([&] { (void)session->modify(privateData, {record("B")}); }), CloudFailure::Kind::cancelled);
    }
    EXPECT_EQ(container_->newSession()->count(privateData, "ActivityRecord"), 1U);
}

}  // namespace quorvane
