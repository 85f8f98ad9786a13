#include "store/ActivityRecord.h"

#include "platform/Clock.h"
#include "store/EntityDescription.h"
#include "support/Matchers.h"
#include "support/Matching.h"

namespace quorvane {
namespace {

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

TEST_F(ActivityRecordTest, AnUnknownStatusReadsAsReviewAndStaysStored) {
    const std::tuple<const char*, BillingStatus, bool> rows[] = {{"review", BillingStatus::review, true},
                                                                 {"billable", BillingStatus::billable, true},
                                                                 {"nonBillable", BillingStatus::nonBillable, false},
                                                                 {"excluded", BillingStatus::excluded, false},
                                                                 {"Billable", BillingStatus::review, true},
                                                                 {"", BillingStatus::review, true}};
    for (const auto& [stored, expected, counts] : rows) {
        SCOPED_TRACE(stored);
        ActivityRecord record;
        record.billingStatus = stored;
        EXPECT_EQ(record.billingStatusValue(), expected);
        EXPECT_EQ(countsTowardBilling(record.billingStatusValue()), counts);
        EXPECT_EQ(record.billingStatus(), stored);
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
    const std::pair<const char*, std::vector<std::string>> rows[] = {{"", {}},
                                                                     {" ", {""}},
                                                                     {"a, b ,c", {"a", "b", "c"}},
                                                                     {"a,,b", {"a", "", "b"}},
                                                                     {",", {"", ""}},
                                                                     {"\ta b\t,\u3000c\u00A0", {"a b", "c"}},
                                                                     {"a\n, b;c", {"a\n", "b;c"}}};
    ActivityRecord record;
    for (const auto& [stored, expected] : rows) {
        record.tags = stored;
        EXPECT_EQ(record.tagList(), expected) << stored;
    }
    record.setTagList({" a ", "", "b,c"});
    EXPECT_EQ(record.tags(), " a ,,b,c");
    record.setTagList({});
    EXPECT_EQ(record.tags(), "");
}

TEST_F(ActivityRecordTest, ATagIsAddedOnceAndWithoutBlanks) {
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"", "  a\t", "a"},
        {"", "   ", ""},
        {"a", "", "a"},
        {"a, b ,c", "d", "a,b,c,d"},
        {"a", "A", "a,A"},
        {"a", "b,c", "a,b,c"},
        {"", "\n", "\n"},
        {"a,,b", "c", "a,,b,c"},
        {"a, b ,c", " b", "a, b ,c"},  // there already: not even the blanks go
    };
    ActivityRecord record;
    for (const auto& [stored, added, expected] : rows) {
        record.tags = stored;
        record.addTag(added);
        EXPECT_EQ(record.tags(), expected) << stored << " and " << added;
    }
}

}  // namespace
}  // namespace quorvane
