#include "platform/Clock.h"
#include "rules/BuiltInRuleTemplates.h"
#include "rules/RuleDraft.h"
#include "rules/RuleEngine.h"
#include "store/ModelContainer.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <fmt/format.h>

// What classifying one new record costs, beside the number of rules.
namespace quorvane::bench {
namespace {

using Rules = std::vector<std::shared_ptr<Rule>>;

/// Rules as users have them: mostly names and titles, one in ten on pages or documents, one in fifty an expression. A
/// few of them match.
Rules makeRules(std::int64_t count) {
    Rules rules;
    for (std::int64_t i = 0; i < count; ++i) {
        RuleDraft draft;
        draft.name = fmt::format("rule {}", i);
        draft.priority = 100 + i % 7;
        draft.value = fmt::format("Client {}", i);
        draft.category = "工作";
        draft.tags = fmt::format("client, c{}", i);
        draft.field = i % 3 == 0 ? RuleDraft::Field::windowTitle : RuleDraft::Field::appName;
        if (i % 10 == 9) draft.field = i % 20 == 9 ? RuleDraft::Field::urlHost : RuleDraft::Field::documentPath;
        if (i % 50 == 49) {
            draft.matchOperator = RuleDraft::MatchOperator::regex;
            draft.value = fmt::format("^(quarter|year)-{}[ab]?\\.", i);
        }
        rules.push_back(std::make_shared<Rule>());
        draft.writeTo(*rules.back());
    }
    return rules;
}

std::shared_ptr<ActivityRecord> makeRecord() {
    return std::make_shared<ActivityRecord>(
        ActivityRecord::Values{.appBundleId = "org.mozilla.firefox",
                               .appName = "Firefox",
                               .windowTitle = "Client 300 — Ångström & Söhne: quarterly figures, second draft",
                               .documentPath = "/home/anna/projects/harbour/figures/quarter-2.ods",
                               .url = "https://docs.example.com/spreadsheets/d/1a2b3c/edit#gid=0",
                               .source = "system"});
}

/// The engine alone, with the rules at hand.
void applyRules(benchmark::State& state) {
    const Rules rules = makeRules(state.range(0));
    const auto record = makeRecord();
    for (auto _ : state) {
        record->source = "system";
        RuleEngine::apply(*record, rules, {});
    }
    if (record->source() == "system") state.SkipWithError("no rule matched");
}

/// With the reading of the rules from the store, as for each new record.
void fetchAndApplyRules(benchmark::State& state) {
    const auto file = std::filesystem::temp_directory_path() / "quorvane-rules-bench.sqlite";
    std::filesystem::remove(file);
    {
        ModelContainer container({.file = file});
        auto& context = container.mainContext();
        for (const auto& rule : makeRules(state.range(0)))
            context.insert(rule);
        context.save();
    }
    ModelContainer container({.file = file});
    const auto record = makeRecord();
    for (auto _ : state) {
        record->source = "system";
        RuleEngine::apply(*record, container.mainContext().fetch<Rule>(), {});
    }
}

BENCHMARK(applyRules)->Arg(10)->Arg(146)->Arg(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(fetchAndApplyRules)->Arg(10)->Arg(146)->Arg(1000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace quorvane::bench

BENCHMARK_MAIN();
