#include "shell/look/Theme.h"
#include "shell/look/LookScene.h"

#include <utility>

namespace quorvane {
namespace {

using ColorOf = QColor Theme::*;

struct NamedTheme {
    const char* name;
    Theme theme;
};

const NamedTheme themes[] = {{"light", Theme::light()},
                             {"dark", Theme::dark()},
                             {"light, high contrast", Theme::light().withHighContrast()},
                             {"dark, high contrast", Theme::dark().withHighContrast()}};

void expectContrast(const NamedTheme& row, ColorOf ink, ColorOf ground, double least) {
    EXPECT_GE(contrast(row.theme.*ink, row.theme.*ground), least)
        << row.name << ": " << qPrintable((row.theme.*ink).name()) << " on " << qPrintable((row.theme.*ground).name());
}

TEST(ThemeTest, EveryTextReachesFourAndAHalfToOne) {
    const ColorOf quietGrounds[] = {&Theme::canvas, &Theme::side,  &Theme::surface, &Theme::sunken,
                                    &Theme::hover,  &Theme::press, &Theme::accSoft};
    const std::pair<ColorOf, ColorOf> pairs[] = {
        {&Theme::accInk, &Theme::accSoft}, {&Theme::onFill, &Theme::accFill}, {&Theme::onFill, &Theme::accFillHover},
        {&Theme::onFill, &Theme::badFill}, {&Theme::ok, &Theme::okSoft},      {&Theme::warn, &Theme::warnSoft},
        {&Theme::bad, &Theme::badSoft},    {&Theme::ok, &Theme::surface},     {&Theme::warn, &Theme::surface},
        {&Theme::bad, &Theme::surface},    {&Theme::accent, &Theme::surface}, {&Theme::accent, &Theme::canvas},
        {&Theme::tipText, &Theme::tip},    {&Theme::text, &Theme::segment},
    };
    for (const NamedTheme& row : themes) {
        for (const ColorOf ground : quietGrounds)
            for (const ColorOf ink : {&Theme::text, &Theme::text2, &Theme::text3})
                expectContrast(row, ink, ground, 4.5);
        for (const auto& [ink, ground] : pairs)
            expectContrast(row, ink, ground, 4.5);
    }
}

TEST(ThemeTest, EdgesRingsAndIconsReachThreeToOne) {
    for (const NamedTheme& row : themes)
        for (const ColorOf ground : {&Theme::canvas, &Theme::side, &Theme::surface, &Theme::sunken})
            for (const ColorOf edge : {&Theme::control, &Theme::accent, &Theme::orange, &Theme::bad})
                expectContrast(row, edge, ground, 3);
}

TEST(ThemeTest, InkIsWhiteOnlyWhereItCanBeRead) {
    const std::pair<QRgb, QColor> rows[] = {{0xFFFFFF, Qt::black},
                                            {0x000000, Qt::white},
                                            {0x767676, Qt::white},
                                            {0x777777, Qt::black},
                                            {0xFFD60A, Qt::black}};
    for (const auto& [ground, ink] : rows)
        EXPECT_EQ(inkOn(QColor::fromRgb(ground)), ink) << std::hex << ground;
}

}  // namespace
}  // namespace quorvane
