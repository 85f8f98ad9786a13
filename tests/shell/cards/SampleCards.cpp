#include "shell/cards/SampleCards.h"

#include "base/Iso8601.h"

#include <algorithm>
#include <utility>

namespace quorvane {
namespace {

constexpr Date noon{Seconds{1773316800.0}};  // 2026-03-12T12:00:00Z

std::vector<AppStat> statsOf(const std::vector<std::pair<std::string, double>>& hours) {
    double sum = 0;
    for (const auto& [name, part] : hours)
        sum += part;
    std::vector<AppStat> stats;
    for (const auto& [name, part] : hours)
        stats.push_back({.id = Uuid({static_cast<std::uint8_t>(stats.size() + 1)}),
                         .appName = name,
                         .hours = part,
                         .percentage = 100 * part / sum});
    return stats;
}

SampleCard sample(const std::string& name, const std::string& message, const std::string& reason,
                  const std::vector<std::pair<std::string, double>>& hours) {
    SampleCard made{.name = name, .choice = {.message = message, .appStats = statsOf(hours), .date = noon}};
    if (!reason.empty()) made.choice.reason = reason;
    for (const AppStat& stat : made.choice.appStats)
        made.choice.totalHours += stat.hours;
    return made;
}

}  // namespace

std::vector<SampleCard> sampleCards() {
    std::vector<SampleCard> all{
        sample("light", "Your focus today would make a Swiss watchmaker look distracted.",
               "You coded with Visual Studio Code for 1.3 hours today",
               {{"Visual Studio Code", 2.7},
                {"Figma", 1.3},
                {"Firefox", 1.2},
                {"Thunderbird", 0.6},
                {"Slack", 0.5},
                {"Terminal", 0.4}}),
        sample("rich", "Ideas bloomed today like a garden in May, and every bee in it took notes.",
               "You designed with Figma for 3.4 hours today",
               {{"Figma", 3.4},
                {"Visual Studio Code", 2.9},
                {"Firefox", 1.6},
                {"Slack", 1.1},
                {"Thunderbird", 0.9},
                {"LibreOffice Calc – Quarterly Planning", 0.8},
                {"微信", 0.6},
                {"Terminal", 0.5},
                {"Spotify", 0.4},
                {"Zoom", 0.4},
                {"GIMP", 0.3},
                {"Obsidian", 0.2}}),
        sample("empty", "Every day is a blank page, and today you kept it beautifully blank.", "", {}),
        sample(
            "german",
            "Mit deiner außergewöhnlichen Konzentrationsfähigkeit hättest du heute sogar die "
            "Donaudampfschifffahrtsgesellschaft pünktlich durch sämtliche Stromschnellen gesteuert!",
            "Heute mit Entwicklungsumgebungsverwaltungsprogramm programmiert: 4.2 Stunden, und das trotz zahlreicher "
            "Besprechungen",
            {{"Entwicklungsumgebungsverwaltungsprogramm", 4.2},
             {"Textverarbeitung", 2.1},
             {"Rechtschreibprüfung", 1},
             {"Bildschirmaufzeichnung", 0.7},
             {"Termine", 0.4}}),
        sample("arabic",
               "تركيزك اليوم كان أدق من ساعة سويسرية، وأفكارك تتفتح مثل حديقة في أول أيام الربيع فلا تتوقف عن العطاء!",
               "اليوم برمجت باستخدام Visual Studio Code لمدة 3.2 ساعة",
               {{"Visual Studio Code", 3.2}, {"محرر النصوص", 1.5}, {"متصفح الويب", 1.1}, {"البريد", 0.6}}),
        sample(
            "japanese",
            "今日のあなたの集中力は、京都の老舗の時計職人が思わず手を止めて見入ってしまうほど、静かで美しく、そして力"
            "強いものでした！",
            "今日はVisual Studio Codeで3.2時間プログラミングしました",
            {{"Visual Studio Code", 3.2}, {"テキストエディタ", 1.4}, {"表計算", 0.9}, {"メール", 0.5}})};
    for (SampleCard& card : all)
        card.choice.showTimeDistribution = card.name == "japanese";
    all[1].choice.selectedAppKey = appKey(all[1].choice.appStats[0]);
    return all;
}

SampleCard sampleCard(const std::string& name) {
    const auto all = sampleCards();
    return *std::ranges::find(all, name, &SampleCard::name);
}

ShareImageConfig configOf(const SampleCard& sample, CardStyle style, ColorScheme scheme) {
    ShareImageChoice choice = sample.choice;
    choice.style = style;
    choice.scheme = scheme;
    return shareImageConfig(choice);
}

}  // namespace quorvane
