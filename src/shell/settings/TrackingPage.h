#pragma once

#include "l10n/Localization.h"
#include "shell/state/SettingsView.h"

#include <QWidget>
#include <cstdint>

class QComboBox;

namespace quorvane {

class IconView;
class Label;
class SettingsRow;
class SettingsSection;

/// When somebody is away, what begins a record, when they work, and what that means in words.
class TrackingPage : public QWidget {
public:
    TrackingPage(SettingsView& settings, const Localization& localization, QWidget* parent = nullptr);

private:
    QWidget* idle();
    QComboBox* thresholds();
    QWidget* records();
    QWidget* workHours();
    QWidget* days();
    QWidget* hours();
    /// Hour and minute, named `name`.
    QWidget* time(const QString& name, std::int64_t& hour, std::int64_t& minute);
    QWidget* preview();
    void refresh();

    SettingsView& settings_;
    const Localization& localization_;
    SettingsRow* idleRow_ = nullptr;
    QWidget* thresholdRow_ = nullptr;
    QWidget* callsRow_ = nullptr;
    SettingsRow* titlesRow_ = nullptr;
    QWidget* daysRow_ = nullptr;
    QWidget* hoursRow_ = nullptr;
    Label* meaning_ = nullptr;
    QWidget* now_ = nullptr;
    IconView* nowIcon_ = nullptr;
    Label* nowText_ = nullptr;
};

}  // namespace quorvane
