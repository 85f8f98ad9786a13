#include "store/InitialSettings.h"

#include "store/AppPreference.h"
#include "support/TemporaryStore.h"

#include <cstdlib>
#include <gmock/gmock.h>

namespace quorvane {
namespace {

TEST(InitialSettingsTest, WorkDaysAreMondayToFridayWhereverTheWeekBegins) {
    const std::pair<const char*, const char*> rows[] = {
        {"en_US", "1,2,3,4,5"}, {"de_DE", "0,1,2,3,4"}, {"ar_EG", "2,3,4,5,6"}, {"dv_MV", "0,3,4,5,6"}};
    for (const auto& [locale, stored] : rows) {
        SCOPED_TRACE(locale);
        const Calendar calendar(locale, "UTC");
        const auto settings = InitialSettings::make(calendar);
        EXPECT_EQ(settings->workDays(), stored);
        settings->onlyTrackWorkHours = true;
        for (int day = 1; day <= 7; ++day)  // 1 March 2026 is a Sunday
            EXPECT_EQ(settings->isWithinWorkHours(calendar.date({2026, 3, day}, 12), calendar), day >= 2 && day <= 6)
                << day;
    }
}

TEST(InitialSettingsTest, TheLanguageIsTheFirstSupportedOneOfTheDesktopAndElseEnglish) {
    const std::pair<const char*, const char*> rows[] = {
        {"de_DE.UTF-8", "de"}, {"pl:it:en", "it"}, {"pl_PL.UTF-8", "en"}, {"zh-Hans", "zh"}};
    for (const auto& [list, language] : rows) {
        setenv("LANGUAGE", list, 1);
        EXPECT_EQ(InitialSettings::make()->preferredLanguage(), language) << list;
    }
    unsetenv("LANGUAGE");
}

TEST(InitialSettingsTest, AStoreGetsOneRowUnlessAnOlderThresholdIsNoWholeMinutes) {
    const std::tuple<std::optional<std::int64_t>, std::size_t, std::int64_t> rows[] = {
        {std::nullopt, 1, 5},
        {120, 1, 2},
        {45, 0, 1},
        {61, 0, 2},
        {0, 0, 1},
        {INT64_MIN, 0, 1},
        {INT64_MAX, 0, INT64_MAX / 60 + 1}};
    for (const auto& [olderSeconds, count, minutes] : rows) {
        SCOPED_TRACE(minutes);
        TemporaryStore store;
        if (olderSeconds) {
            const auto older = std::make_shared<AppPreference>();
            older->idleThresholdSeconds = *olderSeconds;
            store.context().insert(older);
        }
        EXPECT_EQ(InitialSettings::of(store.context())->idleThresholdMinutes(), minutes);
        InitialSettings::ensure(store.context());
        InitialSettings::ensure(store.context());
        const auto stored = store.anotherContext()->fetch<AppSettings>();
        ASSERT_EQ(stored.size(), count);
        for (const auto& settings : stored) {
            EXPECT_EQ(settings->idleThresholdMinutes(), minutes);
            EXPECT_TRUE(settings->enableIdleDetection());
            EXPECT_FALSE(settings->onlyTrackWorkHours());
        }
    }
}

TEST(InitialSettingsTest, ARowThatIsThereStaysAsItIs) {
    TemporaryStore store;
    const auto settings = std::make_shared<AppSettings>();  // Tuesday to Saturday in Germany, as its screen showed
    store.context().insert(settings);
    store.context().save();
    InitialSettings::ensure(store.context());
    const auto stored = store.anotherContext()->fetch<AppSettings>();
    ASSERT_EQ(stored.size(), 1U);
    EXPECT_EQ(stored[0]->workDays(), "1,2,3,4,5");
    EXPECT_EQ(stored[0]->preferredLanguage(), "zh");
}

}  // namespace
}  // namespace quorvane
