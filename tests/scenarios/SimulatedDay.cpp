#include "scenarios/SimulatedDay.h"

#include "base/Calendar.h"

#include <cmath>
#include <fmt/format.h>

namespace quorvane {

SimulatedDayTest::SimulatedDayTest()
    : tracker(std::make_unique<ActivityTracker>(runLoop, desktop, keyboard, mouse,
                                                TrackerServices{.windowInfo = windowInfo}, console)) {
    desktop.setFrontmostSilently("org.example.editor", "Editor");
}

SimulatedDayTest::~SimulatedDayTest() {
    tracker.reset();
    runLoop.runPosted();
}

void SimulatedDayTest::startTrackingAt(std::string_view time) {
    runLoop.playUntil(time);
    tracker->configure(store.context());
    tracker->start();
}

std::shared_ptr<AppSettings> SimulatedDayTest::saveSettings(const std::function<void(AppSettings&)>& change) {
    auto settings = std::make_shared<AppSettings>();
    change(*settings);
    store.context().insert(settings);
    store.context().save();
    return settings;
}

std::vector<std::shared_ptr<ActivityRecord>> SimulatedDayTest::storedRecords() {
    runLoop.runPosted();
    readers_.push_back(store.anotherContext());
    return readers_.back()->fetch<ActivityRecord>({.sort = {ascending(&ActivityRecord::startTime)}});
}

std::string SimulatedDayTest::timeText(Date date) const {
    const auto at = Calendar::current().components(date);
    const double fraction = secondsSince1970(date) - std::floor(secondsSince1970(date));
    std::string text = fmt::format("{:02}:{:02}:{:02}", at.hour, at.minute, at.second);
    if (fraction > 1e-6) text += fmt::format("{:.6g}", fraction).substr(1);
    return text;
}

std::vector<std::string> SimulatedDayTest::records() {
    std::vector<std::string> seen;
    for (const auto& record : storedRecords()) {
        seen.push_back(record->appName().value_or("-") + " " + timeText(record->startTime()));
        if (record->endTime()) seen.back() += " to " + timeText(*record->endTime());
    }
    return seen;
}

std::vector<std::string> SimulatedDayTest::newLines(bool ofTheTrackerAlone) {
    const std::string name = "ActivityTracker: ";
    std::vector<std::string> lines;
    const auto all = console.lines();
    for (; linesSeen_ < all.size(); ++linesSeen_) {
        const std::string& line = all[linesSeen_];
        if (line.find("🔄 Tick called at") != std::string::npos) continue;
        if (line.starts_with(name))
            lines.push_back(line.substr(name.size()));
        else if (!ofTheTrackerAlone)
            lines.push_back(line);
    }
    return lines;
}

}  // namespace quorvane
