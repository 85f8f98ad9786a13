#include "shell/state/ProjectBillingEditor.h"

#include "support/Builders.h"
#include "support/TemporaryStore.h"

#include <cstdlib>
#include <fmt/format.h>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(ProjectBillingEditorTest, EditsAreInTheProjectAtOnceAndDoneDatesThem) {
    const Date noon = at("12:00:00");
    const platform::ClockOverride clock([&] { return noon; });
    TemporaryStore store;
    const auto project = insertProject(store.context(), "Harbour", 85);
    project->updatedAt = at("09:00:00");
    const auto stored = [&] {
        store.context().save();
        const auto other = store.anotherContext();
        const auto read = other->fetch<Project>().at(0);
        return fmt::format("{}|{}|{}|{}|{}", read->name(), read->clientName().value_or("-"), read->hourlyRate(),
                           read->currencyCode(), read->updatedAt() == noon ? "now" : "before");
    };
    ProjectBillingEditor editor(project);
    EXPECT_EQ(editor.hourlyRateText(), "85.00");
    editor.setName("Harbour 2");
    editor.setClientName("Northlight");
    editor.setCurrencyCode("GBP");
    editor.setHourlyRateText("92.5");
    EXPECT_EQ(stored(), "Harbour 2|Northlight|92.5|GBP|before");
    editor.setClientName("");
    editor.stepHourlyRate(-100);
    editor.done();
    EXPECT_EQ(stored(), "Harbour 2|-|0|GBP|now");
}

TEST(ProjectBillingEditorTest, ARateIsReadAsTheLocaleWritesItAndAnythingElseChangesNothing) {
    constexpr double wrong = 7;  // the rate stays as it was
    const std::tuple<const char*, const char*, double> rows[] = {
        {"en_GB.UTF-8", "85.25", 85.25},    {"en_GB.UTF-8", "1,234.5", 1234.5}, {"en_GB.UTF-8", " 40 ", 40},
        {"en_GB.UTF-8", "85,25", wrong},    {"en_GB.UTF-8", "8x", wrong},       {"en_GB.UTF-8", "", wrong},
        {"en_GB.UTF-8", "-1", wrong},       {"en_GB.UTF-8", "∞", wrong},        {"de_DE.UTF-8", "85,25", 85.25},
        {"de_DE.UTF-8", "1.234,5", 1234.5}, {"de_DE.UTF-8", "85.25", wrong},    {"C.UTF-8", "0", 0}};
    for (const auto& [locale, text, expected] : rows) {
        SCOPED_TRACE(std::string(locale) + " " + text);
        setenv("LC_ALL", locale, 1);
        const auto project = std::make_shared<Project>();
        project->hourlyRate = wrong;
        ProjectBillingEditor editor(project);
        editor.setHourlyRateText(text);
        EXPECT_EQ(project->hourlyRate(), expected);
        EXPECT_EQ(editor.isHourlyRateWrong(), expected == wrong);
        editor.setHourlyRateText("9");
        EXPECT_FALSE(editor.isHourlyRateWrong());
    }
    setenv("LC_ALL", "en_US.UTF-8", 1);  // what tests have
}

}  // namespace
}  // namespace quorvane
