#include "rules/BuiltInRuleTemplates.h"

#include "base/Fnv.h"
#include "rules/RuleActionPayload.h"
#include "rules/RuleCondition.h"
#include "rules/RuleSignature.h"
#include "store/Rule.h"
#include "store/StoreError.h"

#include <array>
#include <fmt/format.h>
#include <unordered_set>

namespace quorvane::BuiltInRuleTemplates {
namespace {

using namespace std::string_view_literals;

// Localized names stand side by side: a record has the name that its application shows.
constexpr std::array developerTools{"Xcode"sv,          "Visual Studio Code"sv,
                                    "VS Code"sv,        "Cursor"sv,
                                    "IntelliJ IDEA"sv,  "WebStorm"sv,
                                    "PyCharm"sv,        "GoLand"sv,
                                    "Android Studio"sv, "Sublime Text"sv,
                                    "Nova"sv,           "BBEdit"sv,
                                    "Terminal"sv,       "iTerm"sv,
                                    "Warp"sv,           "Hyper"sv,
                                    "Docker"sv,         "Postman"sv,
                                    "Insomnia"sv,       "GitHub Desktop"sv,
                                    "Sourcetree"sv};
constexpr std::array officeDocs{
    "Word"sv,         "Microsoft Word"sv, "Excel"sv,   "Microsoft Excel"sv, "PowerPoint"sv,  "Microsoft PowerPoint"sv,
    "Pages"sv,        "Numbers"sv,        "Keynote"sv, "WPS Office"sv,      "LibreOffice"sv, "OnlyOffice"sv,
    "Notes"sv,        "メモ"sv,           "備忘錄"sv,  "备忘录"sv,          "Calendar"sv,    "Calendrier"sv,
    "Calendario"sv,   "カレンダー"sv,     "日历"sv,    "Reminders"sv,       "Rappels"sv,     "Recordatorios"sv,
    "リマインダー"sv, "提醒事项"sv};
constexpr std::array designTools{"Figma"sv,         "Sketch"sv,
                                 "Photoshop"sv,     "Adobe Photoshop"sv,
                                 "Illustrator"sv,   "Adobe Illustrator"sv,
                                 "InDesign"sv,      "Lightroom"sv,
                                 "After Effects"sv, "Premiere Pro"sv,
                                 "Final Cut Pro"sv, "DaVinci Resolve"sv,
                                 "Canva"sv,         "Affinity Designer"sv,
                                 "Affinity Photo"sv};
constexpr std::array studyResearch{"Books"sv,    "Livres"sv,     "Libros"sv,    "ブック"sv,    "Kindle"sv,
                                   "Zotero"sv,   "Mendeley"sv,   "EndNote"sv,   "Obsidian"sv,  "Notion"sv,
                                   "Anki"sv,     "Notability"sv, "Goodnotes"sv, "GoodNotes"sv, "MarginNote"sv,
                                   "Duolingo"sv, "Coursera"sv,   "Udemy"sv};
constexpr std::array communication{"Messages"sv, "メッセージ"sv,
                                   "Mail"sv,     "メール"sv,
                                   "Courrier"sv, "Correo"sv,
                                   "Outlook"sv,  "Gmail"sv,
                                   "WeChat"sv,   "微信"sv,
                                   "LINE"sv,     "KakaoTalk"sv,
                                   "WhatsApp"sv, "Telegram"sv,
                                   "Signal"sv,   "Discord"sv,
                                   "DingTalk"sv, "钉钉"sv,
                                   "Lark"sv,     "飞书"sv,
                                   "Slack"sv,    "Microsoft Teams"sv,
                                   "Zoom"sv,     "Google Meet"sv,
                                   "Skype"sv,    "Tencent Meeting"sv,
                                   "腾讯会议"sv};
constexpr std::array entertainment{"Music"sv,
                                   "Musique"sv,
                                   "Música"sv,
                                   "ミュージック"sv,
                                   "Spotify"sv,
                                   "Apple TV"sv,
                                   "TV"sv,
                                   "YouTube"sv,
                                   "Netflix"sv,
                                   "Hulu"sv,
                                   "Disney+"sv,
                                   "Prime Video"sv,
                                   "Twitch"sv,
                                   "Bilibili"sv,
                                   "哔哩哔哩"sv,
                                   "Steam"sv,
                                   "Epic Games Launcher"sv,
                                   "Battle.net"sv,
                                   "PlayStation Remote Play"sv,
                                   "QQ Music"sv,
                                   "网易云音乐"sv};
constexpr std::array shopping{"Amazon"sv,   "eBay"sv,       "Etsy"sv,  "Rakuten"sv, "楽天"sv,      "Mercari"sv,
                              "メルカリ"sv, "AliExpress"sv, "Shein"sv, "Zara"sv,    "Taobao"sv,    "淘宝"sv,
                              "Tmall"sv,    "天猫"sv,       "JD"sv,    "京东"sv,    "Pinduoduo"sv, "拼多多"sv};

constexpr std::array<TextKey, 1> developerToolsTags{"builtin_rule_tag_development"};
constexpr std::array<TextKey, 1> officeDocsTags{"builtin_rule_tag_office"};
constexpr std::array<TextKey, 1> designToolsTags{"builtin_rule_tag_design"};
constexpr std::array<TextKey, 1> studyResearchTags{"builtin_rule_tag_learning"};
constexpr std::array<TextKey, 1> communicationTags{"builtin_rule_tag_communication"};
constexpr std::array<TextKey, 1> entertainmentTags{"builtin_rule_tag_entertainment"};
constexpr std::array<TextKey, 1> shoppingTags{"builtin_rule_tag_shopping"};

constexpr std::array templates{
    BuiltInRuleTemplate{"developer-tools", "builtin_rule_developer_tools", developerTools, ActivityCategory::work,
                        developerToolsTags, 900},
    BuiltInRuleTemplate{"office-docs", "builtin_rule_office_docs", officeDocs, ActivityCategory::work, officeDocsTags,
                        910},
    BuiltInRuleTemplate{"design-tools", "builtin_rule_design_tools", designTools, ActivityCategory::work,
                        designToolsTags, 920},
    BuiltInRuleTemplate{"study-research", "builtin_rule_study_research", studyResearch, ActivityCategory::learn,
                        studyResearchTags, 930},
    BuiltInRuleTemplate{"communication", "builtin_rule_communication", communication, ActivityCategory::social,
                        communicationTags, 940},
    BuiltInRuleTemplate{"entertainment", "builtin_rule_entertainment", entertainment, ActivityCategory::entertainment,
                        entertainmentTags, 950},
    BuiltInRuleTemplate{"shopping", "builtin_rule_shopping", shopping, ActivityCategory::shopping, shoppingTags, 960},
};

std::vector<std::string> texts(std::span<const TextKey> keys, const Localization& localization) {
    std::vector<std::string> found;
    for (const TextKey key : keys)
        found.push_back(localization.text(key));
    return found;
}

std::shared_ptr<Rule> makeRule(const BuiltInRuleTemplate& ruleTemplate, std::string_view appName,
                               const Localization& localization) {
    const RuleConditionSet set{{{.id = conditionId(ruleTemplate.id, appName),
                                 .field = std::string(rawValue(RuleField::appName)),
                                 .matchOperator = std::string(rawValue(RuleOperator::contains)),
                                 .value = std::string(appName)}}};
    const RuleActionPayload payload{.category = std::string(rawValue(ruleTemplate.category)),
                                    .tags = texts(ruleTemplate.tagKeys, localization),
                                    .stopProcessing = false};
    auto rule = std::make_shared<Rule>();
    rule->name = localization.text("builtin_rule_name_template", localization.text(ruleTemplate.nameKey), appName);
    rule->priority = ruleTemplate.priority;
    rule->condition = set.json();
    rule->action = payload.json();
    return rule;
}

}  // namespace

std::span<const BuiltInRuleTemplate> all() {
    return templates;
}

Uuid conditionId(std::string_view templateId, std::string_view appName) {
    const std::uint64_t hash = fnv1a(fmt::format("{}|{}", templateId, appName));
    return Uuid::parse(fmt::format("00000000-0000-4000-8000-{:012x}", hash & 0xffff'ffff'ffff)).value();
}

ImportResult importAll(ModelContext& context, const Localization& localization) {
    std::unordered_set<std::string> signatures;
    for (const auto& rule : context.fetch<Rule>())
        signatures.insert(ruleSignature(*rule));
    ImportResult result;
    for (const BuiltInRuleTemplate& ruleTemplate : templates)
        for (const std::string_view appName : ruleTemplate.appNames) {
            const auto rule = makeRule(ruleTemplate, appName, localization);
            const bool isNew = signatures.insert(ruleSignature(*rule)).second;
            if (isNew) context.insert(rule);
            ++(isNew ? result.imported : result.skipped);
        }
    try {
        context.save();
    } catch (const StoreError&) {
        // The rules wait in the context for the next save.
    }
    return result;
}

std::string message(const ImportResult& result, const Localization& localization) {
    return localization.text("builtin_rules_import_result_message", result.imported, result.skipped);
}

}  // namespace quorvane::BuiltInRuleTemplates
