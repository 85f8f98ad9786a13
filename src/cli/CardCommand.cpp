#include "base/Calendar.h"
#include "cli/Arguments.h"
#include "cli/CardPainter.h"
#include "cli/CommandContext.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "platform/Clock.h"
#include "praise/EffectiveUsage.h"
#include "praise/PraiseMessageDatabase.h"
#include "store/AppSettings.h"
#include "store/ModelContext.h"
#include "timeline/AppStatistics.h"

#include <CLI/CLI.hpp>

namespace quorvane::cli {
namespace {

struct CardOptions {
    std::optional<CivilDate> date;
    CardStyle style = CardStyle::clean;
    ColorScheme scheme = ColorScheme::ocean;
    bool isDistribution = false;
    std::optional<std::string> file;
};

/// The day's card as the share window shows it first, with a sentence of its own.
ShareImageConfig configOf(ModelContext& store, const CardOptions& options) {
    const Date now = platform::currentDate();
    const auto calendar = Calendar::current();
    const Date date = options.date ? calendar.date(*options.date) : now;
    const auto records = recordsStartingIn(store, calendar.day(date));
    const double hours = appStatistics(records, now).totalHours;
    const auto settings = store.fetch<AppSettings>({.limit = 1});
    Praise praise =
        PraiseMessageDatabase::generatePraise({.day = {.records = records, .hours = hours, .now = now},
                                               .settings = settings.empty() ? nullptr : settings.front().get()});
    return shareImageConfig({.style = options.style,
                             .scheme = options.scheme,
                             .message = std::move(praise.message),
                             .reason = std::move(praise.reason),
                             .totalHours = hours,
                             .appStats = effectiveUsage(records, now),
                             .date = date,
                             .showTimeDistribution = options.isDistribution});
}

void paintCard(const CommandContext& context, const CardOptions& options) {
    ModelContext store(context.open(StoreAccess::read));
    Output output(options.file, context);
    output.write(CardPainter::pngOf(configOf(store, options)));
    output.finish();
}

}  // namespace

void addCardCommand(CLI::App& app, CommandContext& context) {
    auto* command = app.add_subcommand("card", "A picture of a day to share, as a PNG file");
    const auto options = std::make_shared<CardOptions>();
    addDateOption(*command, "--date", options->date, "The day on which the records start; today if left out");
    addTextOption(*command, "--style", "NAME", "How it looks; clean if left out",
                  [options](const std::string& text) { options->style = readCase<CardStyle>("--style", text); });
    addTextOption(*command, "--scheme", "NAME", "Its colours; ocean if left out",
                  [options](const std::string& text) { options->scheme = readCase<ColorScheme>("--scheme", text); });
    command->add_flag("--distribution", options->isDistribution, "Shares of the day instead of hours");
    addOutputOption(*command, options->file)->required();
    command->callback([&context, options] { context.command = [&context, options] { paintCard(context, *options); }; });
}

}  // namespace quorvane::cli
