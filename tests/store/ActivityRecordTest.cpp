#include "store/ActivityRecord.h"

#include "platform/Clock.h"
#include "store/EntityDescription.h"
#include "support/Matchers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ActivityRecordTest : public testing::Test {
protected:
    platform::ClockOverride clock{[] { return at("12:00:00"); }};
};

TEST_F(ActivityRecordTest, AnEmptyRecordHasTheDefaultsOfItsValuesAndAnIdOfItsOwn) {
    const ActivityRecord made;
    const ActivityRecord fromValues{ActivityRecord::Values{}};
    for (const auto& attribute : ActivityRecord::description().attributes)
        EXPECT_EQ(attribute.get(made) == attribute.get(fromValues), attribute.name != "id") << attribute.name;
    EXPECT_EQ(made.startTime(), at("12:00:00"));
}

TEST_F(ActivityRecordTest, EnumerationsAreKeptAsTheirRawValues) {
    const ActivityRecord record({.activityType = ActivityType::document,
                                 .category = ActivityCategory::entertainment,
                                 .billingStatus = BillingStatus::nonBillable});
    EXPECT_EQ(record.activityType(), "document");
    EXPECT_EQ(record.category(), "娱乐");
    EXPECT_EQ(record.billingStatus(), "nonBillable");
    std::vector<std::string_view> types;
    for (const auto& [value, text] : RawValues<ActivityType>::table)
        types.push_back(text);
    EXPECT_THAT(types, ElementsAre("app", "document", "url", "idle", "sleep"));
    std::vector<std::string_view> categories;
    for (const auto& [value, text] : RawValues<ActivityCategory>::table)
        categories.push_back(text);
    EXPECT_THAT(categories,
                ElementsAre("工作", "学习", "娱乐", "运动", "社交", "休息", "出行", "购物", "其他", "空闲"));
}

TEST_F(ActivityRecordTest, AnUnknownStatusReadsAsReviewAndStaysStored) {
    struct Row {
        const char* stored;
        BillingStatus expected;
        bool counts;
    };
    const Row rows[] = {
        {"review", BillingStatus::review, true},
        {"billable", BillingStatus::billable, true},
        {"nonBillable", BillingStatus::nonBillable, false},
        {"excluded", BillingStatus::excluded, false},
        {"Billable", BillingStatus::review, true},
        {"", BillingStatus::review, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.stored);
        ActivityRecord record;
        record.billingStatus = row.stored;
        EXPECT_EQ(record.billingStatusValue(), row.expected);
        EXPECT_EQ(countsTowardBilling(record.billingStatusValue()), row.counts);
        EXPECT_EQ(record.billingStatus(), row.stored);
    }
}

TEST_F(ActivityRecordTest, SettingTheStatusCountsAsAChangeForTheCloudAndTaggingDoesNot) {
    const auto record = aRecord().from("09:00:00").make();
    record->addTag("a");
    record->setTagList({"a", "b"});
    EXPECT_EQ(record->updatedAt(), at("09:00:00"));
    record->setBillingStatus(BillingStatus::excluded);
    EXPECT_EQ(record->billingStatus(), "excluded");
    EXPECT_EQ(record->updatedAt(), at("12:00:00"));
}

TEST_F(ActivityRecordTest, TagsAreSplitAtCommasAndFreedOfBlanks) {
    struct Row {
        const char* stored;
        std::vector<std::string> expected;
    };
    const Row rows[] = {
        {"", {}},
        {" ", {""}},
        {"a", {"a"}},
        {"a, b ,c", {"a", "b", "c"}},
        {"a,,b", {"a", "", "b"}},
        {",", {"", ""}},
        {"\ta b\t,\u3000c\u00A0", {"a b", "c"}},
        {"a\n, b", {"a\n", "b"}},
        {"a;b", {"a;b"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.stored);
        ActivityRecord record;
        record.tags = row.stored;
        EXPECT_EQ(record.tagList(), row.expected);
    }
}

TEST_F(ActivityRecordTest, ATagIsAddedOnceAndWithoutBlanks) {
    struct Row {
        const char* stored;
        const char* added;
        const char* expected;
    };
    const Row rows[] = {
        {"", "a", "a"},
        {"", "  a\t", "a"},
        {"", "   ", ""},
        {"a", "", "a"},
        {"a, b ,c", " b", "a, b ,c"},  // there already: not even the blanks go
        {"a, b ,c", "d", "a,b,c,d"},
        {"a", "A", "a,A"},
        {"a", "b,c", "a,b,c"},
        {"a,,b", "c", "a,,b,c"},
        {"", "\n", "\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << "\"" << row.stored << "\" and \"" << row.added << "\"");
        ActivityRecord record;
        record.tags = row.stored;
        record.addTag(row.added);
        EXPECT_EQ(record.tags(), row.expected);
    }
}

TEST_F(ActivityRecordTest, ATagListIsJoinedAsItIs) {
    ActivityRecord record;
    record.setTagList({" a ", "", "b,c"});
    EXPECT_EQ(record.tags(), " a ,,b,c");
    record.setTagList({});
    EXPECT_EQ(record.tags(), "");
    EXPECT_THAT(record.tagList(), IsEmpty());
}

}  // namespace
}  // namespace quorvane
