#include "hygiene/RandomHistory.h"

#include <algorithm>
#include <array>
#include <random>

namespace quorvane {
namespace {

constexpr std::array lengths{-60.0, 0.0, 5.0, 19.5, 20.0, 29.5, 30.0, 60.0, 119.5, 300.0, 600.0, 3600.0, 90000.0};
constexpr std::array gaps{0.0, 0.0, 0.5, 10.0, 30.0, 30.5, 120.0, 1800.0, 40000.0, -1.0, -60.0, -299.5, -300.0, -300.5};
/// Where stretches of records begin, from now: far back, around the cut-off, and up to the future.
constexpr std::array anchors{-1'800'000.0, -1'209'700.0, -1'209'600.0, -40'000.0, -9000.0, -400.0, -60.0, 600.0};
constexpr std::array apps{"Editor", "Browser", "Terminal"};

}  // namespace

std::vector<std::shared_ptr<ActivityRecord>> randomHistory(unsigned seed, Date now, int count) {
    std::mt19937 random(seed);
    const auto below = [&](std::size_t end) { return std::uniform_int_distribution<std::size_t>(0, end - 1)(random); };
    const auto id = [&] {
        std::array<std::uint8_t, 16> bytes{};
        std::ranges::generate(bytes, [&] { return static_cast<std::uint8_t>(random()); });
        return Uuid(bytes);
    };
    std::vector<std::shared_ptr<ActivityRecord>> records;
    Date start;
    for (int i = 0; i < count; ++i) {
        if (i % 12 == 0) start = now + Seconds{anchors[below(anchors.size())]};
        const Date end = start + Seconds{lengths[below(lengths.size())]};
        const bool isOpen = below(15) == 0;
        auto record = std::make_shared<ActivityRecord>(
            ActivityRecord::Values{.id = id(),
                                   .startTime = start,
                                   .endTime = isOpen ? std::nullopt : std::optional(end),
                                   .activityType = below(8) == 0 ? ActivityType::url : ActivityType::app,
                                   .windowTitle = below(3) == 0 ? "two" : "one",
                                   .billingStatus = below(12) == 0 ? BillingStatus::billable : BillingStatus::review,
                                   .updatedAt = start + (isOpen ? Seconds{lengths[below(lengths.size())]} : 0s)});
        if (below(12) == 0) record->cloudKitRecordID = record->id().string();
        if (const auto app = below(apps.size() + 1); app < apps.size()) {
            record->appName = apps[app];
            record->appBundleId = std::string("org.example.") + apps[app];
        }
        records.push_back(std::move(record));
        start = std::max(start, below(4) == 0 ? start : end) + Seconds{gaps[below(gaps.size())]};
    }
    std::ranges::shuffle(records, random);
    return records;
}

StoreState stateOf(ModelContext& context) {
    StoreState state;
    for (const auto& record : context.fetch<ActivityRecord>())
        state[record->id()] = {record->startTime(), record->endTime(), record->updatedAt()};
    return state;
}

}  // namespace quorvane
