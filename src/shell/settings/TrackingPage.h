#pragma once

#include "shell/settings/SettingsPage.h"
#include "shell/state/SettingsView.h"

#include <cstdint>

namespace quorvane {

class IconView;

/// When somebody is away, what begins a record, when they work, and what that means in words.
class TrackingPage : public SettingsPage {
public:
    TrackingPage(SettingsView& settings, const Localization& localization);

private:
    void addIdle();
    void addRecords();
    void addWorkHours();
    QWidget* thresholds();
    QWidget* days();
    QWidget* hours();
    /// Hour and minute, named `name`.
    QWidget* time(const QString& name, std::int64_t& hour, std::int64_t& minute);
    QWidget* preview();
    void refresh();

    SettingsView& settings_;
    SettingsRow* idleRow_ = nullptr;
    SettingsRow* thresholdRow_ = nullptr;
    SettingsRow* callsRow_ = nullptr;
    SettingsRow* titlesRow_ = nullptr;
    SettingsRow* daysRow_ = nullptr;
    SettingsRow* hoursRow_ = nullptr;
    Label* meaning_ = nullptr;
    QWidget* now_ = nullptr;
    IconView* nowIcon_ = nullptr;
    Label* nowText_ = nullptr;
};

}  // namespace quorvane
