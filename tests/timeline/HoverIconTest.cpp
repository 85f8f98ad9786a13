#include "timeline/HoverIcon.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(HoverIconTest, FindsTheIconByTheWholeBundleIdentifierOrElseByAPartOfTheName) {
    struct Row {
        std::optional<std::string> bundleId;
        std::optional<std::string> appName;
        std::optional<std::string_view> expected;
    };
    const Row rows[] = {
        {"com.apple.finder", {}, "finder_icon"},
        {"com.apple.mail", "Safari", "mail_icon"},
        {"com.apple.iCal", {}, "calendar_icon"},
        {"com.microsoft.Excel", "Microsoft Excel", "excel_icon"},
        {{}, "WeChat", "wechat_icon"},
        {{}, "Safari Technology Preview", "safari_icon"},
        {{}, "com.apple.mail helper", "mail_icon"},
        {{}, "Xcode Numbers", "numbers_icon"},  // of several, the first in the table
        {"com.apple.finder.x", "Finder", {}},
        {{}, "Mail", {}},
        {{}, "", {}},
        {{}, {}, {}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(hoverIconName(row.bundleId, row.appName), row.expected) << row.appName.value_or("none");
}

}  // namespace
}  // namespace quorvane
