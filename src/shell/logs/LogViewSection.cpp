#include "shell/logs/LogViewSection.h"

#include "shell/logs/LogActions.h"
#include "shell/logs/LogRows.h"
#include "shell/look/AccessibleRole.h"
#include "shell/look/Boxes.h"
#include "shell/look/Card.h"
#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"

#include <QListView>
#include <QLocale>
#include <algorithm>
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
      total_(statistic(qt(localization.text("ui_log_total")), &Theme::text)),
      warnings_(statistic(levelText(LogLevel::warning), &Theme::warn)),
      errors_(statistic(levelText(LogLevel::error), &Theme::bad)), list_(new QListView), rows_(new LogRows(list_)),
      none_(new Label(qt(localization.text("no_logs")), TypeRole::body, &Theme::text3)) {
    prepareList();
    auto* const card = new Card;
    auto* const inside = columnBox(12, card);
    inside->setContentsMargins(Metrics::cardPadding, 12, Metrics::cardPadding, 12);
    inside->addLayout(statistics());
    inside->addWidget(list_);
    inside->addWidget(none_);
    inside->addLayout(actions());
    auto* const column = columnBox(6, this);
    column->addLayout(head());
    column->addWidget(card);
    column->addLayout(privacyNote());
    due_.setSingleShot(true);
    connect(&due_, &QTimer::timeout, this, [this] { refresh(); });
    subscribe(logger.logsChanged, *this, [this] {
        if (isVisible()) due_.start(0);
    });
    refresh();
}

LogViewSection::Statistic LogViewSection::statistic(const QString& label, QColor Theme::*color) {
    const Statistic made{
        .well = kind("well", new QFrame), .value = new Label({}, TypeRole::title, color), .label = label};
    setAccessibleRole(*made.well, QAccessible::StaticText);
    auto* const words = columnBox(0, made.well);
    words->setContentsMargins(12, 8, 12, 8);
    words->addWidget(made.value);
    words->addWidget(new Label(label, TypeRole::caption, &Theme::text2));
    return made;
}

void LogViewSection::Statistic::show(int count) const {
    value->setText(QLocale().toString(count));
    well->setAccessibleName(label + QStringLiteral(": ") + value->text());
}

/// It is as high as what it shows, and nothing in it can be chosen.
void LogViewSection::prepareList() {
    list_->setAccessibleName(qt(localization_.text("recent_logs_title")));
    list_->setModel(rows_);
    list_->setItemDelegate(new LogRowDelegate(LogRowDelegate::Kind::compact, list_));
    list_->setFocusPolicy(Qt::NoFocus);
    list_->setSelectionMode(QListView::NoSelection);
    list_->setFrameShape(QFrame::NoFrame);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->viewport()->setAutoFillBackground(false);
}

QLayout* LogViewSection::head() {
    auto* const line = lineBox(8);
    line->setContentsMargins(2, 0, 2, 0);
    line->addWidget(new Label(qt(localization_.text("recent_logs_title")), TypeRole::label, &Theme::text2), 1);
    line->addWidget(count_);
    return line;
}

QLayout* LogViewSection::statistics() {
    auto* const line = lineBox(12);
    for (const Statistic& each : {total_, warnings_, errors_})
        line->addWidget(each.well, 1);
    return line;
}

QLayout* LogViewSection::actions() {
    const auto button = [this](const std::string& text, const char* iconName, const char* kind, auto act) {
        auto* const made = pushButton(qt(text), kind);
        made->setIcon(icon(QString::fromLatin1(iconName)));
        connect(made, &QAbstractButton::clicked, this, act);
        return made;
    };
    auto* const line = lineBox(8);
    line->addWidget(
        button(localization_.text("open_full_log_window"), "window", "plain small", [this] { openLogWindow_(); }));
    line->addWidget(button(localization_.text("export_diagnostic_report"), "save", "plain small",
                           [this] { LogActions::exportReport(*this, logger_, localization_, settingsModule); }));
    line->addStretch(1);
    line->addWidget(button(localization_.text("clear_logs"), "trash", "danger small", [this] { askToClear(); }));
    return line;
}

QLayout* LogViewSection::privacyNote() {
    auto* const words = new Label(qt(localization_.text("log_privacy_help")), TypeRole::labelPlain, &Theme::text2);
    words->setWordWrap(true);
    auto* const line = lineBox(8);
    line->setContentsMargins(2, 2, 2, 0);
    line->addWidget(new IconView(QStringLiteral("lock"), 14, &Theme::text2), 0, Qt::AlignTop);
    line->addWidget(words, 1);
    return line;
}

void LogViewSection::refresh() {
    const LogStatistics statistics = logger_.logStatistics();
    count_->setText(qt(localization_.text("log_count_caption", statistics.total)));
    total_.show(statistics.total);
    warnings_.show(statistics.warning);
    errors_.show(statistics.error);
    auto latest = logger_.recentLogs(recentCount);
    std::ranges::reverse(latest);
    if (latest != rows_->entries()) rows_->setEntries(std::move(latest));
    list_->setFixedHeight(rows_->rowCount() * list_->sizeHintForRow(0));
    list_->setVisible(rows_->rowCount() > 0);
    none_->setVisible(rows_->rowCount() == 0);
}

void LogViewSection::askToClear() {
    if (std::exchange(showingClearConfirmation_, true)) return;
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
