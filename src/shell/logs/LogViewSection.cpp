#include "shell/logs/LogViewSection.h"

#include "shell/logs/CompactLogEntryRow.h"
#include "shell/logs/LogActions.h"
#include "shell/logs/LogRowText.h"
#include "shell/logs/StatisticItem.h"
#include "shell/look/AccessibleRole.h"
#include "shell/look/Card.h"
#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <utility>

namespace quorvane {
namespace {

constexpr int recentCount = 4;
constexpr const char* settingsModule = "Settings";

}  // namespace

LogViewSection::LogViewSection(AppLogger& logger, const Localization& localization, std::function<void()> openLogWindow,
                               QWidget* parent)
    : QWidget(parent), logger_(logger), localization_(localization), openLogWindow_(std::move(openLogWindow)),
      count_(new Label({}, TypeRole::caption, &Theme::text3)),
      total_(new StatisticItem(qt(localization.text("ui_log_total")), &Theme::text)),
      warnings_(new StatisticItem(LogRowText::level(LogLevel::warning), &Theme::warn)),
      errors_(new StatisticItem(LogRowText::level(LogLevel::error), &Theme::bad)), list_(new QWidget),
      rows_(new QVBoxLayout(list_)) {
    setAccessibleRole(*list_, QAccessible::List, qt(localization.text("recent_logs_title")));
    rows_->setContentsMargins(0, 0, 0, 0);
    rows_->setSpacing(0);
    auto* const card = new Card;
    auto* const inside = new QVBoxLayout(card);
    inside->setContentsMargins(Metrics::cardPadding, 12, Metrics::cardPadding, 12);
    inside->setSpacing(12);
    inside->addLayout(makeStatistics());
    inside->addWidget(list_);
    inside->addLayout(makeActions());
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    column->addLayout(makeHead());
    column->addWidget(card);
    column->addLayout(makePrivacyNote());
    due_.setSingleShot(true);
    connect(&due_, &QTimer::timeout, this, [this] { refresh(); });
    subscribe(logger.logsChanged, *this, [this] {
        if (isVisible()) due_.start(0);
    });
    refresh();
    showEntries();
}

QLayout* LogViewSection::makeHead() {
    auto* const line = new QHBoxLayout;
    line->setContentsMargins(2, 0, 2, 0);
    auto* const title = new Label(qt(localization_.text("recent_logs_title")), TypeRole::label, &Theme::text2);
    line->addWidget(title, 1);
    line->addWidget(count_);
    return line;
}

QLayout* LogViewSection::makeStatistics() {
    auto* const line = new QHBoxLayout;
    line->setSpacing(12);
    for (StatisticItem* const item : {total_, warnings_, errors_})
        line->addWidget(item, 1);
    return line;
}

QLayout* LogViewSection::makeActions() {
    const auto button = [](const std::string& text, const char* iconName, const char* kind) {
        auto* const made = pushButton(qt(text), kind);
        setKind(*made, "small", true);
        made->setIcon(icon(QString::fromLatin1(iconName)));
        return made;
    };
    auto* const open = button(localization_.text("open_full_log_window"), "window", "plain");
    auto* const save = button(localization_.text("export_diagnostic_report"), "save", "plain");
    auto* const clear = button(localization_.text("clear_logs"), "trash", "danger");
    connect(open, &QAbstractButton::clicked, this, [this] { openLogWindow_(); });
    connect(save, &QAbstractButton::clicked, this,
            [this] { LogActions::exportReport(*this, logger_, localization_, settingsModule); });
    connect(clear, &QAbstractButton::clicked, this, [this] { askToClear(); });
    auto* const line = new QHBoxLayout;
    line->setSpacing(8);
    line->addWidget(open);
    line->addWidget(save);
    line->addStretch(1);
    line->addWidget(clear);
    return line;
}

QLayout* LogViewSection::makePrivacyNote() {
    auto* const line = new QHBoxLayout;
    line->setContentsMargins(2, 2, 2, 0);
    line->setSpacing(8);
    line->addWidget(new IconView(QStringLiteral("lock"), 14, &Theme::text2), 0, Qt::AlignTop);
    auto* const words = new Label(qt(localization_.text("log_privacy_help")), TypeRole::labelPlain, &Theme::text2);
    words->setWordWrap(true);
    line->addWidget(words, 1);
    return line;
}

void LogViewSection::refresh() {
    statistics_ = logger_.logStatistics();
    count_->setText(qt(localization_.text("log_count_caption", statistics_.total)));
    total_->setValue(statistics_.total);
    warnings_->setValue(statistics_.warning);
    errors_->setValue(statistics_.error);
    if (auto present = logger_.recentLogs(recentCount); present != recentLogs_) {
        recentLogs_ = std::move(present);
        showEntries();
    }
}

void LogViewSection::showEntries() {
    while (QLayoutItem* const item = rows_->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    for (auto entry = recentLogs_.rbegin(); entry != recentLogs_.rend(); ++entry)
        rows_->addWidget(new CompactLogEntryRow(*entry));
    if (recentLogs_.empty())
        rows_->addWidget(new Label(qt(localization_.text("no_logs")), TypeRole::body, &Theme::text3));
}

void LogViewSection::askToClear() {
    if (showingClearConfirmation_) return;
    showingClearConfirmation_ = true;
    LogActions::confirmClear(
        *window(), localization_,
        [this] {
            showingClearConfirmation_ = false;
            logger_.clearLogs();
        },
        [this] { showingClearConfirmation_ = false; });
}

void LogViewSection::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh();
}

}  // namespace quorvane
