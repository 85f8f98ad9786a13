#include "shell/state/ProjectBillingEditor.h"

#include "support/Builders.h"
#include "support/TemporaryStore.h"

#include <cstdlib>
#include <fmt/format.h>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

/// The locale of numbers while it lives.
class NumbersOf {
public:
    explicit NumbersOf(const char* locale) : before_(std::getenv("LC_ALL") ? std::getenv("LC_ALL") : "") {
        setenv("LC_ALL", locale, 1);
    }
    NumbersOf(const NumbersOf&) = delete;
    NumbersOf& operator=(const NumbersOf&) = delete;
    ~NumbersOf() { before_.empty() ? unsetenv("LC_ALL") : setenv("LC_ALL", before_.c_str(), 1); }

private:
    std::string before_;
};

TEST(ProjectBillingEditorTest, EditsAreInTheProjectAtOnceAndDoneDatesThem) {
    const Date noon = at("12:00:00");
    const platform::ClockOverride clock([&] { return noon; });
    const NumbersOf english("en_GB.UTF-8");
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
    struct Row {
        const char* locale;
        const char* text;
        double expected;  ///< 7 for what stays as it was
        bool isWrong = false;
    };
    const Row rows[] = {
        {"en_GB.UTF-8", "85.25", 85.25},    {"en_GB.UTF-8", "1,234.5", 1234.5}, {"en_GB.UTF-8", " 40 ", 40},
        {"en_GB.UTF-8", "85,25", 7, true},  {"en_GB.UTF-8", "8x", 7, true},     {"en_GB.UTF-8", "", 7, true},
        {"en_GB.UTF-8", "-1", 7, true},     {"en_GB.UTF-8", "∞", 7, true},      {"de_DE.UTF-8", "85,25", 85.25},
        {"de_DE.UTF-8", "1.234,5", 1234.5}, {"de_DE.UTF-8", "85.25", 7, true},  {"C.UTF-8", "0", 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.locale) + " " + row.text);
        const NumbersOf numbers(row.locale);
        const auto project = std::make_shared<Project>();
        project->hourlyRate = 7;
        ProjectBillingEditor editor(project);
        editor.setHourlyRateText(row.text);
        EXPECT_EQ(project->hourlyRate(), row.expected);
        EXPECT_EQ(editor.isHourlyRateWrong(), row.isWrong);
        editor.setHourlyRateText("9");
        EXPECT_FALSE(editor.isHourlyRateWrong());
    }
}

}  // namespace
}  // namespace quorvane
