#include "timeline/ProjectTone.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

using AppColorPalette::projectColor;

TEST(ProjectToneTest, FindsATonesColorsByItsNameInAnyCaseAndTakesFogForAnyOther) {
    struct Row {
        const char* name;
        const char* fill;
        const char* accent;
    };
    const Row rows[] = {
        {"mint", "#BDF0DA", "#12B886"},   {"SKY", "#C2DBFA", "#1C7ED6"},   {"rose", "#FBD1D8", "#E64980"},
        {"lilac", "#DCCFF5", "#7950F2"},  {"teal", "#C4E8E8", "#0C8599"},  {"Apricot", "#FFE3C0", "#E8590C"},
        {"lemon", "#F7EFB8", "#B08900"},  {"fog", "#D9E3EC", "#5C6B7A"},   {"red", "#FFC9C9", "#E03131"},
        {"blue", "#BAC8FF", "#4263EB"},   {"green", "#C3F0CA", "#2F9E44"}, {"orange", "#FFD8A8", "#F76707"},
        {"purple", "#EEBEFA", "#AE3EC9"}, {"pink", "#FFB8D9", "#D6336C"},  {"yellow", "#FFEC99", "#E67700"},
        {"cyan", "#B8ECF5", "#1098AD"},   {"", "#D9E3EC", "#5C6B7A"},      {"gray", "#D9E3EC", "#5C6B7A"},
        {" mint", "#D9E3EC", "#5C6B7A"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(hexText(projectColor(row.name, false)), row.fill);
        EXPECT_EQ(hexText(projectColor(row.name, true)), row.accent);
    }
}

}  // namespace
}  // namespace quorvane
