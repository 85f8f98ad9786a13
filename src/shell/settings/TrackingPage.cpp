#include "shell/settings/TrackingPage.h"

#include "shell/look/Boxes.h"
#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/IconWell.h"
#include "shell/look/Theme.h"

#include <QComboBox>
#include <fmt/format.h>

namespace quorvane {
namespace {

constexpr int thresholdWidth = 160;
constexpr int timeWidth = 66;  // for two digits

/// Two digits each, from 0.
QComboBox* numbers(int count, std::int64_t chosen, const QString& name) {
    auto* const combo = new QComboBox;
    combo->setFixedWidth(static_cast<int>(timeWidth * typeScale()));
    combo->setMaxVisibleItems(12);
    combo->setAccessibleName(name);
    for (int number = 0; number < count; ++number)
        combo->addItem(qt(fmt::format("{:02}", number)));
    combo->setCurrentIndex(static_cast<int>(chosen));
    return combo;
}

}  // namespace

TrackingPage::TrackingPage(SettingsView& settings, const Localization& localization)
    : SettingsPage(localization), settings_(settings) {
    addIdle();
    addRecords();
    addWorkHours();
    add(preview());
    refresh();
}

void TrackingPage::addIdle() {
    auto& section = addSection("idle_detection_section_title");
    idleRow_ = section.addSwitch("enable_idle_detection", settings_.enableIdleDetection, [this] { refresh(); });
    thresholdRow_ = section.addRow("idle_threshold_label", thresholds());
    thresholdRow_->setHelp(text("idle_threshold_help"));
    callsRow_ = section.addSwitch("calls_as_presence_toggle", settings_.countsCallsAsPresence);
    callsRow_->setHelp(text("calls_as_presence_help"));
    section.addSwitch("offer_absences_toggle", settings_.offersAbsences)->setHelp(text("offer_absences_help"));
}

// A stored number that isn't offered stands there as what is chosen, and can't be chosen again.
QWidget* TrackingPage::thresholds() {
    const auto minutesText = [this](std::int64_t minutes) {
        return qt(localization().text("idle_minutes_format", minutes));
    };
    auto* const combo = new QComboBox;
    combo->setFixedWidth(thresholdWidth);
    combo->setAccessibleName(text("idle_threshold_label") + QStringLiteral(", ") + text("minutes_picker_label"));
    for (const std::int64_t minutes : SettingsView::idleMinutesOffered)
        combo->addItem(minutesText(minutes));
    combo->setPlaceholderText(minutesText(settings_.idleThresholdMinutes));
    const auto choice = settings_.idleChoice();
    combo->setCurrentIndex(choice ? static_cast<int>(*choice) : -1);
    connect(combo, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (index >= 0)
            settings_.idleThresholdMinutes = SettingsView::idleMinutesOffered.at(static_cast<std::size_t>(index));
    });
    return combo;
}

void TrackingPage::addRecords() {
    titlesRow_ =
        addSection("records_section_title").addSwitch("split_by_title_toggle", settings_.splitsRecordsByTitle, [this] {
            refresh();
        });
}

void TrackingPage::addWorkHours() {
    auto& section = addSection("work_hours_section_title");
    section.addSwitch("only_track_work_hours_toggle", settings_.onlyTrackWorkHours, [this] { refresh(); });
    daysRow_ = section.addRow("work_days_label", days());
    hoursRow_ = section.addRow("work_hours_label", hours());
}

QWidget* TrackingPage::days() {
    auto* const toggles = new QWidget;
    auto* const line = lineBox(6, toggles);
    for (const SettingsView::Weekday& day : settings_.weekdays()) {
        auto* const toggle = pushButton(qt(day.name), "toggle");
        toggle->setCheckable(true);
        toggle->setChecked(settings_.workDays.contains(day.number));
        connect(toggle, &QAbstractButton::toggled, this, [this, number = day.number](bool isOn) {
            settings_.setWorkDay(number, isOn);
            refresh();
        });
        line->addWidget(toggle);
    }
    return toggles;
}

QWidget* TrackingPage::hours() {
    auto* const both = new QWidget;
    auto* const line = lineBox(20, both);
    line->addWidget(time(text("work_start_time"), settings_.workStartHour, settings_.workStartMinute));
    line->addWidget(time(text("work_end_time"), settings_.workEndHour, settings_.workEndMinute));
    return both;
}

QWidget* TrackingPage::time(const QString& name, std::int64_t& hour, std::int64_t& minute) {
    const auto picker = [&](int count, std::int64_t& value, const QString& what) {
        auto* const combo = numbers(count, value, name + QStringLiteral(", ") + what);
        connect(combo, &QComboBox::currentIndexChanged, this, [this, &value](int index) {
            value = index;
            refresh();
        });
        return combo;
    };
    auto* const pair = new QWidget;
    pair->setLayoutDirection(Qt::LeftToRight);  // a clock reads the same way everywhere
    auto* const line = lineBox(8, pair);
    line->addWidget(new Label(name, TypeRole::body, &Theme::text2));
    line->addWidget(picker(24, hour, text("hour_picker_label")));
    line->addWidget(new Label(QStringLiteral(":"), TypeRole::body, &Theme::text2));
    line->addWidget(picker(60, minute, text("minutes_picker_label")));
    return pair;
}

QWidget* TrackingPage::preview() {
    auto* const well = new IconWell(QStringLiteral("eye"), Tone::info);
    auto* const head = lineBox(8);
    head->addWidget(new Label(text("settings_preview_title"), TypeRole::label, &Theme::accInk), 1);
    head->addWidget(new Label(text("current_settings_label"), TypeRole::caption, &Theme::text2));
    well->words().addLayout(head);
    meaning_ = new Label({}, TypeRole::body, &Theme::text);
    meaning_->setWordWrap(true);
    well->words().addWidget(meaning_);
    now_ = new QWidget;
    auto* const line = lineBox(6, now_);
    nowIcon_ = new IconView(QStringLiteral("check"), 16, &Theme::ok);
    nowText_ = new Label({}, TypeRole::bodyStrong, &Theme::ok);
    nowText_->setWordWrap(true);
    line->addWidget(nowIcon_, 0, Qt::AlignTop);
    line->addWidget(nowText_, 1);
    well->words().addWidget(now_);
    return well;
}

void TrackingPage::refresh() {
    idleRow_->setHelp(settings_.enableIdleDetection ? text("idle_detection_enabled_help")
                                                    : text("idle_detection_disabled_help"));
    titlesRow_->setHelp(settings_.splitsRecordsByTitle ? text("split_by_title_enabled_help")
                                                       : text("split_by_title_disabled_help"));
    for (SettingsRow* const row : {thresholdRow_, callsRow_})
        row->setShown(settings_.enableIdleDetection);
    for (SettingsRow* const row : {daysRow_, hoursRow_})
        row->setShown(settings_.onlyTrackWorkHours);
    const SettingsView::Preview preview = settings_.preview();
    meaning_->setText(qt(preview.hours.empty() ? preview.days : preview.days + " · " + preview.hours));
    now_->setVisible(!preview.now.empty());
    nowText_->setText(qt(preview.now));
    nowText_->setColor(preview.isInside ? &Theme::ok : &Theme::warn);
    nowIcon_->setIcon(preview.isInside ? QStringLiteral("check") : QStringLiteral("pause"),
                      preview.isInside ? &Theme::ok : &Theme::warn);
}

}  // namespace quorvane
