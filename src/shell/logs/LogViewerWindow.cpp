#include "shell/logs/LogViewerWindow.h"

#include "shell/logs/LogActions.h"
#include "shell/logs/LogList.h"
#include "shell/logs/LogRows.h"
#include "shell/look/Boxes.h"
#include "shell/look/Card.h"
#include "shell/look/Controls.h"
#include "shell/look/EmptyState.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Labelled.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"

#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QShortcut>
#include <QStackedWidget>

namespace quorvane {
namespace {

constexpr QSize leastSize(800, 600);
constexpr QSize firstSize(960, 640);
constexpr int barMargin = 16;
constexpr int levelsWidth = 132;
constexpr int footHeight = 33;
constexpr const char* moduleName = "LogViewer";

}  // namespace

LogViewerWindow::LogViewerWindow(AppLogger& logger, const Localization& localization, QWidget* parent)
    : QWidget(parent, Qt::Window), logger_(logger), localization_(localization), state_(logger, localization),
      search_(searchField(qt(localization.text("search_logs_placeholder")))), list_(new LogList(state_, localization)),
      middle_(new QStackedWidget), caption_(new Label({}, TypeRole::labelPlain, &Theme::text2)),
      filtered_(new Label(qt(localization.text("log_filtered_caption")), TypeRole::label, &Theme::accent)) {
    setWindowTitle(qt(localization.text("ui_log_window_title")));
    setMinimumSize(leastSize);
    resize(firstSize);
    middle_->addWidget(list_);
    middle_->addWidget(new EmptyState(QStringLiteral("search"), qt(localization.text("no_matching_logs")),
                                      qt(localization.text("adjust_log_filter_hint"))));
    auto* const column = columnBox(0, this);
    column->addLayout(tools());
    column->addWidget(new Separator);
    column->addWidget(middle_, 1);
    column->addWidget(new Separator);
    column->addLayout(foot());
    due_.setSingleShot(true);
    connect(&due_, &QTimer::timeout, this, [this] { refresh(); });
    subscribe(state_.entriesChanged, *this, [this] {
        if (isVisible()) due_.start(0);
    });
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, [this] { focusSearch(); });
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_W), this), &QShortcut::activated, this, [this] { close(); });
    list_->setFocus();
}

QLayout* LogViewerWindow::tools() {
    connect(search_, &QLineEdit::textChanged, this,
            [this](const QString& text) { state_.setSearchText(text.toStdString()); });
    auto* const again = iconButton(QStringLiteral("refresh"), qt(localization_.text("refresh")), "plain");
    auto* const clear = iconButton(QStringLiteral("trash"), qt(localization_.text("clear_logs")), "danger");
    auto* const save = pushButton(qt(localization_.text("export_diagnostic_report")));
    save->setIcon(icon(QStringLiteral("save")));
    connect(again, &QAbstractButton::clicked, this, [this] {
        refresh();
        list_->scrollToBottom();
    });
    connect(clear, &QAbstractButton::clicked, this, [this] { askToClear(); });
    connect(save, &QAbstractButton::clicked, this,
            [this] { LogActions::exportReport(*this, logger_, localization_, moduleName); });
    auto* const line = lineBox(8);
    line->setContentsMargins(barMargin, 12, barMargin, 12);
    line->addWidget(levels());
    line->addWidget(search_, 1);
    line->addSpacing(8);
    line->addWidget(followSwitch());
    line->addSpacing(8);
    line->addWidget(again);
    line->addWidget(clear);
    line->addWidget(save);
    return line;
}

QWidget* LogViewerWindow::levels() {
    auto* const levels = new QComboBox;
    levels->setMinimumWidth(levelsWidth);
    levels->addItem(qt(localization_.text("ui_log_level_all")));
    levels->setAccessibleName(levels->itemText(0));
    for (const auto& [level, word] : RawValues<LogLevel>::table)
        levels->addItem(levelText(level), static_cast<int>(level));
    connect(levels, &QComboBox::currentIndexChanged, this, [this, levels] {
        const QVariant chosen = levels->currentData();
        state_.setSelectedLevel(chosen.isValid() ? std::optional(static_cast<LogLevel>(chosen.toInt())) : std::nullopt);
    });
    return levels;
}

QWidget* LogViewerWindow::followSwitch() {
    auto* const follow = switchBox(qt(localization_.text("auto_scroll")));
    follow->setToolTip(qt(localization_.text("auto_scroll_help")));
    follow->setAccessibleDescription(follow->toolTip());
    follow->setChecked(state_.autoScroll());
    connect(follow, &QAbstractButton::toggled, this, [this](bool isOn) { state_.setAutoScroll(isOn); });
    subscribe(state_.autoScrollChanged, *follow, [this, follow] { follow->setChecked(state_.autoScroll()); });
    return follow;
}

/// How many entries show, whether a filter hides some, and what never enters the log.
QLayout* LogViewerWindow::foot() {
    auto* const note = new Label(qt(localization_.text("log_privacy_help")), TypeRole::labelPlain, &Theme::text3);
    note->setElided(true);
    note->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    caption_->setMinimumHeight(footHeight);
    auto* const line = lineBox(8);
    line->setContentsMargins(barMargin, 0, barMargin, 0);
    line->addWidget(caption_);
    line->addWidget(filtered_);
    line->addStretch(1);
    line->addWidget(new IconView(QStringLiteral("lock"), 14, &Theme::text2));
    line->addWidget(note);
    return line;
}

void LogViewerWindow::refresh() {
    const bool hadFocus = list_->hasFocus();
    list_->refresh();
    const auto shown = list_->shownCount();
    middle_->setCurrentIndex(shown == 0 ? 1 : 0);
    if (hadFocus && shown == 0) focusSearch();
    showStatus(shown);
}

void LogViewerWindow::showStatus(std::size_t shownCount) {
    filtered_->setVisible(state_.isNarrowed(shownCount));
    const QString caption = qt(state_.statusCaption(shownCount));
    if (caption == caption_->text()) return;
    caption_->setText(caption);
    if (!QAccessible::isActive()) return;
    QAccessibleEvent event(caption_, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
}

void LogViewerWindow::focusSearch() {
    search_->setFocus(Qt::ShortcutFocusReason);
    search_->selectAll();
}

void LogViewerWindow::askToClear() {
    if (state_.showingClearConfirmation()) return;
    state_.askToClear();
    LogActions::confirmClear(
        *this, localization_, [this] { state_.confirmClear(); }, [this] { state_.cancelClear(); });
}

void LogViewerWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh();
}

}  // namespace quorvane
