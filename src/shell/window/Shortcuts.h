#pragma once

namespace quorvane {

struct AppServices;
class ActivityPage;
class DayTimelineChart;
class MainWindow;

/// The window's keys.
namespace Shortcuts {
void add(MainWindow& window, ActivityPage& page, AppServices& services, DayTimelineChart& chart);
}

}  // namespace quorvane
