#include "shell/logs/LogViewerWindow.h"

#include "shell/logs/LogActions.h"
#include "shell/logs/LogList.h"
#include "shell/logs/LogStatusLine.h"
#include "shell/logs/LogToolBar.h"
#include "shell/look/EmptyState.h"
#include "shell/look/Typography.h"
#include "shell/signals/Subscribe.h"
#include "shell/state/LogViewerState.h"

#include <QShortcut>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace quorvane {
namespace {

constexpr QSize leastSize(800, 600);
constexpr QSize firstSize(960, 640);
constexpr const char* moduleName = "LogViewer";

}  // namespace

struct LogViewerWindow::Parts {
    Parts(LogViewerWindow& owner, AppLogger& usedLogger, const Localization& texts);

    void refresh();
    void askToClear();

    LogViewerWindow& window;
    AppLogger& logger;
    const Localization& localization;
    LogViewerState state;
    LogToolBar* tools;
    LogList* list;
    EmptyState* empty;
    QStackedWidget* middle;
    LogStatusLine* status;
    QTimer due;  ///< one refresh for all that happens in a turn of the event loop
};

LogViewerWindow::Parts::Parts(LogViewerWindow& owner, AppLogger& usedLogger, const Localization& texts)
    : window(owner), logger(usedLogger), localization(texts), state(usedLogger, texts),
      tools(new LogToolBar(state, texts)), list(new LogList(state, texts)),
      empty(new EmptyState(QStringLiteral("search"), qt(texts.text("no_matching_logs")),
                           qt(texts.text("adjust_log_filter_hint")))),
      middle(new QStackedWidget), status(new LogStatusLine(texts)) {
    middle->addWidget(list);
    middle->addWidget(empty);
    auto* const column = new QVBoxLayout(&window);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(tools);
    column->addWidget(middle, 1);
    column->addWidget(status);
    due.setSingleShot(true);
    connect(&due, &QTimer::timeout, &window, [this] { refresh(); });
    subscribe(state.entriesChanged, window, [this] {
        if (window.isVisible()) due.start(0);
    });
    subscribe(tools->refreshPressed, window, [this] {
        refresh();
        list->scrollToBottom();
    });
    subscribe(tools->clearPressed, window, [this] { askToClear(); });
    subscribe(tools->exportPressed, window,
              [this] { LogActions::exportReport(window, logger, localization, moduleName); });
    connect(new QShortcut(QKeySequence::Find, &window), &QShortcut::activated, &window,
            [this] { tools->focusSearch(); });
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_W), &window), &QShortcut::activated, &window,
            [this] { window.close(); });
}

void LogViewerWindow::Parts::refresh() {
    const bool hadFocus = list->hasFocus();
    list->refresh();
    const auto shown = list->shownCount();
    middle->setCurrentWidget(shown == 0 ? static_cast<QWidget*>(empty) : list);
    if (hadFocus && shown == 0) tools->focusSearch();
    status->setStatus(qt(state.statusCaption(shown)), state.isNarrowed(shown));
}

void LogViewerWindow::Parts::askToClear() {
    if (state.showingClearConfirmation()) return;
    state.askToClear();
    LogActions::confirmClear(
        window, localization, [this] { state.confirmClear(); }, [this] { state.cancelClear(); });
}

LogViewerWindow::LogViewerWindow(AppLogger& logger, const Localization& localization, QWidget* parent)
    : QWidget(parent, Qt::Window), parts_(std::make_unique<Parts>(*this, logger, localization)) {
    setWindowTitle(qt(localization.text("ui_log_window_title")));
    setMinimumSize(leastSize);
    resize(firstSize);
    parts_->list->setFocus();
}

LogViewerWindow::~LogViewerWindow() = default;

void LogViewerWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    parts_->refresh();
}

}  // namespace quorvane
