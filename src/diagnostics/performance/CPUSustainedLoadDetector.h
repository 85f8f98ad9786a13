#pragma once

#include "base/Date.h"

#include <deque>
#include <optional>

namespace quorvane {

/// Decides from percentages and dates alone when the process has been busy for too long.
class CPUSustainedLoadDetector {
public:
    struct Policy {
        double thresholdPercent = 30;        ///< load above it counts as high; one fully used core is 100
        Seconds sampleInterval = 3s;         ///< between two samples
        Seconds sustainedSeconds = 6s;       ///< how long a streak of high load must last
        Seconds cooldown = 600s;             ///< least distance between two triggers
        Seconds launchGrace = 30s;           ///< no trigger so soon after the launch
        std::size_t maxTriggersPerDay = 30;  ///< in any rolling 86,400 s
        friend bool operator==(const Policy&, const Policy&) = default;
    };

    /// A streak of high load, as far as its newest samples tell.
    struct Trigger {
        Seconds sustainedSeconds{};
        double peakPercent = 0;
        double averagePercent = 0;
        friend bool operator==(const Trigger&, const Trigger&) = default;
    };

    static constexpr std::size_t maxStreakSamples = 60;
    static constexpr Seconds day = 86'400s;

    CPUSustainedLoadDetector(const Policy& policy, Date launchedAt) : policy_(policy), launchedAt_(launchedAt) {}

    /// Takes the next sample. Only load that is not above the threshold ends a streak; grace, cooldown and the day's
    /// limit let it grow on, so that it triggers with the first sample after them.
    [[nodiscard]] std::optional<Trigger> observe(double percent, Date now);

    [[nodiscard]] bool hasStreak() const { return streakStart_.has_value(); }

private:
    [[nodiscard]] bool isHeldBack(Date now);
    void endStreak();

    Policy policy_;
    Date launchedAt_;
    std::optional<Date> streakStart_;
    std::deque<double> streakSamples_;  ///< the newest
    std::optional<Date> lastTriggerAt_;
    std::deque<Date> recentTriggers_;
};

}  // namespace quorvane
