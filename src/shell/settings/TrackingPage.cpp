#include "shell/settings/TrackingPage.h"

#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/settings/SettingsSection.h"
#include "shell/settings/SettingsWell.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <fmt/format.h>

namespace quorvane {
namespace {

constexpr int thresholdWidth = 160;
constexpr int timeWidth = 66;

/// Two digits each, from 0.
QComboBox* numbers(int count, std::int64_t chosen, const QString& name) {
    auto* const combo = new QComboBox;
    combo->setFixedWidth(timeWidth);
    combo->setMaxVisibleItems(12);
    combo->setAccessibleName(name);
    combo->setStyleSheet(QStringLiteral("QComboBox { padding-right: 4px; }"));  // two digits need no more
    for (int number = 0; number < count; ++number)
        combo->addItem(qt(fmt::format("{:02}", number)));
    combo->setCurrentIndex(static_cast<int>(chosen));
    return combo;
}

QHBoxLayout* flatLine(QWidget* owner, int spacing) {
    auto* const line = new QHBoxLayout(owner);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(spacing);
    return line;
}

}  // namespace

TrackingPage::TrackingPage(SettingsView& settings, const Localization& localization, QWidget* parent)
    : QWidget(parent), settings_(settings), localization_(localization) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Metrics::cardGap);
    column->addWidget(idle());
    column->addWidget(records());
    column->addWidget(workHours());
    column->addWidget(preview());
    refresh();
}

QWidget* TrackingPage::idle() {
    auto* const section = new SettingsSection(qt(localization_.text("idle_detection_section_title")));
    auto* const notice = switchBox({});
    notice->setChecked(settings_.enableIdleDetection);
    connect(notice, &QAbstractButton::toggled, this, [this](bool isOn) {
        settings_.enableIdleDetection = isOn;
        refresh();
    });
    idleRow_ = new SettingsRow(qt(localization_.text("enable_idle_detection")), notice);
    section->addRow(idleRow_);
    auto* const threshold = new SettingsRow(qt(localization_.text("idle_threshold_label")), thresholds());
    threshold->setHelp(qt(localization_.text("idle_threshold_help")));
    thresholdRow_ = section->addRow(threshold);
    auto* const calls = switchBox({});
    calls->setChecked(settings_.countsCallsAsPresence);
    connect(calls, &QAbstractButton::toggled, this, [this](bool isOn) { settings_.countsCallsAsPresence = isOn; });
    auto* const presence = new SettingsRow(qt(localization_.text("calls_as_presence_toggle")), calls);
    presence->setHelp(qt(localization_.text("calls_as_presence_help")));
    callsRow_ = section->addRow(presence);
    auto* const offers = switchBox({});
    offers->setChecked(settings_.offersAbsences);
    connect(offers, &QAbstractButton::toggled, this, [this](bool isOn) { settings_.offersAbsences = isOn; });
    auto* const offer = new SettingsRow(qt(localization_.text("offer_absences_toggle")), offers);
    offer->setHelp(qt(localization_.text("offer_absences_help")));
    section->addRow(offer);
    return section;
}

// A stored number that isn't offered stands there as what is chosen, and can't be chosen again.
QComboBox* TrackingPage::thresholds() {
    auto* const combo = new QComboBox;
    combo->setFixedWidth(thresholdWidth);
    combo->setAccessibleName(
        qt(localization_.text("idle_threshold_label") + ", " + localization_.text("minutes_picker_label")));
    for (const std::int64_t minutes : SettingsView::idleMinutesOffered)
        combo->addItem(qt(localization_.text("idle_minutes_format", minutes)));
    combo->setPlaceholderText(qt(localization_.text("idle_minutes_format", settings_.idleThresholdMinutes)));
    const auto choice = settings_.idleChoice();
    combo->setCurrentIndex(choice ? static_cast<int>(*choice) : -1);
    connect(combo, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (index >= 0)
            settings_.idleThresholdMinutes = SettingsView::idleMinutesOffered.at(static_cast<std::size_t>(index));
    });
    return combo;
}

QWidget* TrackingPage::records() {
    auto* const section = new SettingsSection(qt(localization_.text("records_section_title")));
    auto* const titles = switchBox({});
    titles->setChecked(settings_.splitsRecordsByTitle);
    connect(titles, &QAbstractButton::toggled, this, [this](bool isOn) {
        settings_.splitsRecordsByTitle = isOn;
        refresh();
    });
    titlesRow_ = new SettingsRow(qt(localization_.text("split_by_title_toggle")), titles);
    section->addRow(titlesRow_);
    return section;
}

QWidget* TrackingPage::workHours() {
    auto* const section = new SettingsSection(qt(localization_.text("work_hours_section_title")));
    auto* const only = switchBox({});
    only->setChecked(settings_.onlyTrackWorkHours);
    connect(only, &QAbstractButton::toggled, this, [this](bool isOn) {
        settings_.onlyTrackWorkHours = isOn;
        refresh();
    });
    section->addRow(new SettingsRow(qt(localization_.text("only_track_work_hours_toggle")), only));
    daysRow_ = section->addRow(new SettingsRow(qt(localization_.text("work_days_label")), days()));
    hoursRow_ = section->addRow(new SettingsRow(qt(localization_.text("work_hours_label")), hours()));
    return section;
}

QWidget* TrackingPage::days() {
    auto* const toggles = new QWidget;
    auto* const line = flatLine(toggles, 6);
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
    auto* const line = flatLine(both, 20);
    line->addWidget(
        time(qt(localization_.text("work_start_time")), settings_.workStartHour, settings_.workStartMinute));
    line->addWidget(time(qt(localization_.text("work_end_time")), settings_.workEndHour, settings_.workEndMinute));
    return both;
}

QWidget* TrackingPage::time(const QString& name, std::int64_t& hour, std::int64_t& minute) {
    auto* const pair = new QWidget;
    pair->setLayoutDirection(Qt::LeftToRight);  // a clock reads the same way everywhere
    auto* const line = flatLine(pair, 8);
    auto* const hours =
        numbers(24, hour, QStringLiteral("%1, %2").arg(name, qt(localization_.text("hour_picker_label"))));
    auto* const minutes =
        numbers(60, minute, QStringLiteral("%1, %2").arg(name, qt(localization_.text("minutes_picker_label"))));
    line->addWidget(new Label(name, TypeRole::body, &Theme::text2));
    line->addWidget(hours);
    line->addWidget(new Label(QStringLiteral(":"), TypeRole::body, &Theme::text2));
    line->addWidget(minutes);
    const auto follow = [this](QComboBox* combo, std::int64_t& value) {
        connect(combo, &QComboBox::currentIndexChanged, this, [this, &value](int index) {
            value = index;
            refresh();
        });
    };
    follow(hours, hour);
    follow(minutes, minute);
    return pair;
}

QWidget* TrackingPage::preview() {
    auto* const well = new SettingsWell;
    auto* const box = new QHBoxLayout(well);
    box->setContentsMargins(17, 12, 16, 12);
    box->setSpacing(12);
    auto* const eye = new IconView(QStringLiteral("eye"), 16, &Theme::accInk);
    box->addWidget(eye, 0, Qt::AlignTop);
    auto* const words = new QVBoxLayout;
    words->setSpacing(3);
    auto* const head = new QHBoxLayout;
    head->addWidget(new Label(qt(localization_.text("settings_preview_title")), TypeRole::label, &Theme::accInk), 1);
    head->addWidget(new Label(qt(localization_.text("current_settings_label")), TypeRole::caption, &Theme::text2));
    words->addLayout(head);
    meaning_ = new Label({}, TypeRole::body, &Theme::text);
    meaning_->setWordWrap(true);
    words->addWidget(meaning_);
    now_ = new QWidget;
    auto* const line = flatLine(now_, 6);
    nowIcon_ = new IconView(QStringLiteral("check"), 16, &Theme::ok);
    nowText_ = new Label({}, TypeRole::bodyStrong, &Theme::ok);
    nowText_->setWordWrap(true);
    line->addWidget(nowIcon_, 0, Qt::AlignTop);
    line->addWidget(nowText_, 1);
    words->addWidget(now_);
    box->addLayout(words, 1);
    return well;
}

void TrackingPage::refresh() {
    idleRow_->setHelp(qt(settings_.enableIdleDetection ? localization_.text("idle_detection_enabled_help")
                                                       : localization_.text("idle_detection_disabled_help")));
    titlesRow_->setHelp(qt(settings_.splitsRecordsByTitle ? localization_.text("split_by_title_enabled_help")
                                                          : localization_.text("split_by_title_disabled_help")));
    thresholdRow_->setVisible(settings_.enableIdleDetection);
    callsRow_->setVisible(settings_.enableIdleDetection);
    daysRow_->setVisible(settings_.onlyTrackWorkHours);
    hoursRow_->setVisible(settings_.onlyTrackWorkHours);
    const SettingsView::Preview preview = settings_.preview();
    meaning_->setText(qt(preview.hours.empty() ? preview.days : preview.days + " · " + preview.hours));
    now_->setVisible(!preview.now.empty());
    nowText_->setText(qt(preview.now));
    nowText_->setColor(preview.isInside ? &Theme::ok : &Theme::warn);
    nowIcon_->setIcon(preview.isInside ? QStringLiteral("check") : QStringLiteral("pause"),
                      preview.isInside ? &Theme::ok : &Theme::warn);
}

}  // namespace quorvane
