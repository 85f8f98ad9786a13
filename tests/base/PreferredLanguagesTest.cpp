#include "base/PreferredLanguages.h"

#include <array>
#include <cstdlib>
#include <gmock/gmock.h>

namespace quorvane {
namespace {

TEST(PreferredLanguagesTest, TheListGoesBeforeTheLocalesAndTheFirstThatIsSetIsTaken) {
    constexpr std::array names = {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"};
    const struct {
        std::array<const char*, 4> variables;
        std::vector<std::string> expected;
    } rows[] = {
        {{nullptr, nullptr, nullptr, nullptr}, {}},
        {{"", "", "", ""}, {}},
        {{"fr:DE:zh_CN:pt-BR", "ja_JP.UTF-8", nullptr, nullptr}, {"fr", "de", "zh", "pt"}},
        {{"C:ar@euro:", nullptr, nullptr, nullptr}, {"en", "ar", ""}},
        {{"", "zh_CN.UTF-8", "en_US", "en_US"}, {"zh"}},
        {{nullptr, "POSIX", "zh_CN", "zh_CN"}, {"en"}},
        {{nullptr, "", "fr_FR", "de_DE.UTF-8"}, {"fr"}},
        {{nullptr, nullptr, "", "C.UTF-8"}, {"en"}},
    };
    const auto set = [&](const std::array<const char*, 4>& values) {
        for (std::size_t i = 0; i < names.size(); ++i)
            values[i] ? setenv(names[i], values[i], 1) : unsetenv(names[i]);
    };
    for (const auto& row : rows) {
        set(row.variables);
        EXPECT_EQ(preferredLanguages(), row.expected);
    }
    set({nullptr, "en_US.UTF-8", nullptr, nullptr});  // what tests have
}

}  // namespace
}  // namespace quorvane
