#include "shell/state/Licences.h"

#include "base/Json.h"
#include "base/Text.h"
#include "support/Matching.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>

namespace quorvane {
namespace {

const std::filesystem::path sources = QUORVANE_SOURCES;

/// What a build needs and no program holds afterwards.
const std::set<std::string> tools{"g++", "cmake",        "ninja-build",  "ccache",           "pkg-config",
                                  "git", "libgtest-dev", "libgmock-dev", "libbenchmark-dev", "wayland-protocols"};

/// The libraries in the group [build] of the list of packages.
std::set<std::string> librariesToBuildWith() {
    std::set<std::string> found;
    std::istringstream list(contentOf(sources / "scripts/packages.txt"));
    std::string group;
    for (std::string line; std::getline(list, line);) {
        if (line.starts_with('[')) group = line;
        if (group != "[build]" || line.starts_with('[') || line.starts_with('#')) continue;
        for (const std::string& package : text::split(line, ' '))
            if (!package.empty() && !tools.contains(package)) found.insert(package);
    }
    return found;
}

TEST(LicencesTest, EveryLibraryThatWeBuildWithIsNamed) {
    const auto list = parseJson(contentOf(sources / "resources/licences.json"));
    ASSERT_TRUE(list);
    std::set<std::string> named;
    for (const auto& library : *list)
        for (const auto& package : library.at("packages"))
            named.insert(package.get<std::string>());
    const auto used = librariesToBuildWith();
    EXPECT_GE(used.size(), 10U);
    for (const std::string& package : used)
        EXPECT_TRUE(named.contains(package)) << package
                                             << " is in scripts/packages.txt, but resources/licences.json "
                                                "does not say under which licence it comes";
}

TEST(LicencesTest, EachHasNameLicenceAndCopyrightAndTheyAreInOrder) {
    const auto all = licences();
    EXPECT_THAT(all, Contains(Licence{.name = "Qt",
                                      .licence = "LGPL-3.0-only OR GPL-2.0-only",
                                      .copyright = "2016-2022 The Qt Company Ltd."}));
    for (const Licence& library : all)
        EXPECT_TRUE(!library.name.empty() && !library.licence.empty() && !library.copyright.empty()) << library.name;
    const auto lowered = [](const Licence& library) {
        const auto name = text::lowercased(library.name);
        return name.starts_with('{') ? name.substr(1) : name;
    };
    EXPECT_TRUE(std::ranges::is_sorted(all, {}, lowered));
}

}  // namespace
}  // namespace quorvane
