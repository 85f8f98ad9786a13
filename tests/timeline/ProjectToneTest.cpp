#include "timeline/ProjectTone.h"

#include <gtest/gtest.h>
#include <tuple>

namespace quorvane {
namespace {

using AppColorPalette::projectColor;

TEST(ProjectToneTest, FindsATonesColorsByItsNameInAnyCaseAndTakesFogForAnyOther) {
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"mint", "#BDF0DA", "#12B886"}, {"SKY", "#C2DBFA", "#1C7ED6"},   {"Apricot", "#FFE3C0", "#E8590C"},
        {"fog", "#D9E3EC", "#5C6B7A"},  {"cyan", "#B8ECF5", "#1098AD"},  {"", "#D9E3EC", "#5C6B7A"},
        {"gray", "#D9E3EC", "#5C6B7A"}, {" mint", "#D9E3EC", "#5C6B7A"},
    };
    for (const auto& [name, fill, accent] : rows) {
        EXPECT_EQ(hexText(projectColor(name, false)), fill) << name;
        EXPECT_EQ(hexText(projectColor(name, true)), accent) << name;
    }
}

}  // namespace
}  // namespace quorvane
