#include "base/Calendar.h"
#include "base/Json.h"
#include "base/TerminalText.h"
#include "cli/Arguments.h"
#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "platform/Clock.h"
#include "praise/PraiseMessageDatabase.h"
#include "store/AppSettings.h"
#include "store/ModelContext.h"
#include "timeline/AppStatistics.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace quorvane::cli {
namespace {

struct PraiseOptions {
    std::optional<CivilDate> date;
    std::optional<PraiseCategory> category;
    std::optional<SupportedLanguage> language;
};

std::string written(const Praise& praise, bool asJson) {
    if (asJson)
        return jsonText({{"id", praise.id},
                         {"category", rawValue(praise.row->category)},
                         {"language", rawValue(praise.language)},
                         {"message", praise.message},
                         {"reason", praise.reason ? Json(*praise.reason) : Json()}}) +
               "\n";
    const std::string message = harmlessLine(praise.message) + "\n";
    return praise.reason ? message + harmlessLine(*praise.reason) + "\n" : message;
}

void printPraise(const CommandContext& context, const PraiseOptions& options) {
    ModelContext store(context.open(StoreAccess::read));
    const Date now = platform::currentDate();
    const auto calendar = Calendar::current();
    const auto records = recordsStartingIn(store, calendar.day(options.date ? calendar.date(*options.date) : now));
    const auto settings = store.fetch<AppSettings>({.limit = 1});
    const Praise praise = PraiseMessageDatabase::generatePraise(
        {.day = {.records = records, .hours = appStatistics(records, now).totalHours, .now = now},
         .settings = settings.empty() ? nullptr : settings.front().get(),
         .selectedLanguage = options.language,
         .category = options.category});
    Output output;
    output.write(written(praise, context.json));
    output.finish();
}

}  // namespace

void addPraiseCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("praise", "A cheerful sentence about a day, and why");
    const auto options = std::make_shared<PraiseOptions>();
    addDateOption(*command, "--date", options->date, "The day on which the records start; today if left out");
    addTextOption(
        *command, "--category", "NAME", "What it is about; what fits the day if left out",
        [options](const std::string& text) { options->category = readCase<PraiseCategory>("--category", text); });
    addTextOption(
        *command, "--language", "CODE", "Two letters; the language of the settings if left out",
        [options](const std::string& text) { options->language = readCase<SupportedLanguage>("--language", text); });
    command->callback(
        [&context, options] { context.command = [&context, options] { printPraise(context, *options); }; });
}

}  // namespace quorvane::cli
