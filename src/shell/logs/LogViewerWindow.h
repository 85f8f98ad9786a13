#pragma once

#include "diagnostics/AppLogger.h"
#include "l10n/Localization.h"
#include "shell/state/LogViewerState.h"

#include <QTimer>
#include <QWidget>

class QLineEdit;
class QStackedWidget;

namespace quorvane {

class Label;
class LogList;

/// The log in a window of its own. Whoever opens it shows it, and deletes it when it has been closed; what it is made
/// on outlives it. While it is hidden it follows nothing.
class LogViewerWindow : public QWidget {
public:
    LogViewerWindow(AppLogger& logger, const Localization& localization, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;

private:
    [[nodiscard]] QLayout* tools();
    [[nodiscard]] QWidget* levels();
    [[nodiscard]] QWidget* followSwitch();
    [[nodiscard]] QLayout* foot();
    void refresh();
    void showStatus(std::size_t shownCount);
    void focusSearch();
    void askToClear();

    AppLogger& logger_;
    const Localization& localization_;
    LogViewerState state_;
    QLineEdit* search_;
    LogList* list_;
    QStackedWidget* middle_;
    Label* caption_;
    Label* filtered_;
    QTimer due_;  ///< one refresh for all that happens in a turn of the event loop
};

}  // namespace quorvane
