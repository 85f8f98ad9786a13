// Reads the configuration of a share card from standard input, as quorvane-cli writes it, and writes the card to
// standard output as a PNG file. It needs no display.
#include "praise/ShareImageConfigJson.h"
#include "shell/cards/ShareImageGenerator.h"

#include <QGuiApplication>
#include <cstdio>
#include <iostream>
#include <iterator>
#include <string>

namespace quorvane {
namespace {

int fail(const std::string& message) {
    std::cerr << message << '\n';
    return 1;
}

int paintCard() {
    const std::string text{std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
    const auto json = parseJson(text);
    const auto config = json ? shareImageConfigFrom(*json) : std::nullopt;
    if (!config) return fail("standard input holds no configuration of a share card");
    const auto localization = Localization::fromEnvironment();
    const auto image = ShareImageGenerator(localization).generateShareImage(*config);
    if (!image) return fail("there is no memory for the card");
    const std::string png = pngOf(*image);
    std::cout.write(png.data(), static_cast<std::streamsize>(png.size()));
    return std::cout.flush() ? 0 : fail("cannot write to standard output");
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    return quorvane::paintCard();
}
