#include "shell/state/RecordCategories.h"

#include "base/Text.h"
#include "platform/InBackground.h"
#include "store/ActivityRecord.h"
#include "store/StoreError.h"

#include <optional>
#include <utility>

namespace quorvane {
namespace {

std::set<std::string> categoriesOf(const ModelConfiguration& store, Date since) {
    ModelContext reader(std::make_unique<Database>(store));
    std::set<std::string, std::less<>> stored;
    reader.scan<ActivityRecord>({.predicate = field(&ActivityRecord::startTime) >= since}, {"category"},
                                [&](const Row& row) {
                                    if (row.isNull(0)) return true;
                                    const std::string_view category = row.text(0);
                                    if (!stored.contains(category)) stored.emplace(category);
                                    return true;
                                });
    std::set<std::string> names;
    for (const std::string& category : stored)
        if (auto name = text::trimmedWithNewlines(category); !name.empty()) names.insert(std::move(name));
    return names;
}

}  // namespace

RecordCategories::RecordCategories(ModelContainer& store, platform::RunLoop& runLoop, ConsoleSink& console, Date since)
    : context_(store.mainContext()), reading_(store.configuration()), runLoop_(runLoop), console_(console),
      since_(since) {
    reading_.allowsSave = false;
    recordsChanged_ = context_.didChange.subscribe([this](const EntityChange& change) { follow(change); });
}

void RecordCategories::refresh() {
    try {
        context_.save();  // the worker reads what is stored
    } catch (const StoreError& error) {
        console_.line("BillingDashboardView: Failed to fetch ActivityRecords: {}", error.what());
        return;
    }
    added_.clear();
    platform::inBackground(
        runLoop_,
        [reading = reading_, since = since_]() -> std::optional<std::set<std::string>> {
            try {
                return categoriesOf(reading, since);
            } catch (const StoreError&) {
                return std::nullopt;
            }
        },
        [weak = weak_.handle(), search = ++searches_](std::future<std::optional<std::set<std::string>>> outcome) {
            auto* const self = weak.get();
            if (self == nullptr || search != self->searches_) return;
            if (auto found = outcome.get()) self->take(*std::move(found));
        });
}

void RecordCategories::take(std::set<std::string> names) {
    names.merge(added_);
    if (std::exchange(names_, std::move(names)) != names_) changed.send();
}

void RecordCategories::follow(const EntityChange& change) {
    if (change.kind == EntityChange::Kind::removed) return;
    const auto* const record = dynamic_cast<const ActivityRecord*>(change.entity.get());
    if (record == nullptr || record->startTime() < since_) return;
    const auto name = text::trimmedWithNewlines(record->category().value_or(""));
    if (name.empty()) return;
    added_.insert(name);
    if (names_.insert(name).second) changed.send();
}

}  // namespace quorvane
