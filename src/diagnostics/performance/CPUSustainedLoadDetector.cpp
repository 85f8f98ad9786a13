#include "diagnostics/performance/CPUSustainedLoadDetector.h"

#include <algorithm>
#include <numeric>

namespace quorvane {

std::optional<CPUSustainedLoadDetector::Trigger> CPUSustainedLoadDetector::observe(double percent, Date now) {
    if (!(percent > policy_.thresholdPercent)) {  // what is no number is not above it either
        endStreak();
        return std::nullopt;
    }
    // The first sample stands for the interval that has just passed.
    if (!streakStart_) streakStart_ = now - policy_.sampleInterval;
    streakSamples_.push_back(percent);
    if (streakSamples_.size() > maxStreakSamples) streakSamples_.pop_front();

    const Seconds elapsed = now - *streakStart_;
    if (elapsed < policy_.sustainedSeconds || isHeldBack(now)) return std::nullopt;
    const Trigger trigger{.sustainedSeconds = elapsed,
                          .peakPercent = *std::ranges::max_element(streakSamples_),
                          .averagePercent = std::accumulate(streakSamples_.begin(), streakSamples_.end(), 0.0) /
                                            static_cast<double>(streakSamples_.size())};
    lastTriggerAt_ = now;
    recentTriggers_.push_back(now);
    endStreak();
    return trigger;
}

/// By the launch, the trigger before, or too many of them in a day.
bool CPUSustainedLoadDetector::isHeldBack(Date now) {
    if (now - launchedAt_ < policy_.launchGrace) return true;
    if (lastTriggerAt_ && now - *lastTriggerAt_ < policy_.cooldown) return true;
    std::erase_if(recentTriggers_, [now](Date trigger) { return now - trigger >= day; });
    return recentTriggers_.size() >= policy_.maxTriggersPerDay;
}

void CPUSustainedLoadDetector::endStreak() {
    streakStart_.reset();
    streakSamples_.clear();
}

}  // namespace quorvane
