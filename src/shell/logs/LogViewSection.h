#pragma once

#include "diagnostics/AppLogger.h"
#include "l10n/Localization.h"

#include <QTimer>
#include <QWidget>
#include <functional>
#include <vector>

class QVBoxLayout;

namespace quorvane {

class Label;
class StatisticItem;

/// The log in the settings: counts, the latest entries, newest first, and what can be done with them. While it is
/// hidden it follows nothing.
class LogViewSection : public QWidget {
public:
    /// `openLogWindow` shows the one log window.
    LogViewSection(AppLogger& logger, const Localization& localization, std::function<void()> openLogWindow,
                   QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void refresh();
    void showEntries();
    void askToClear();
    [[nodiscard]] QLayout* makeHead();
    [[nodiscard]] QLayout* makeStatistics();
    [[nodiscard]] QLayout* makeActions();
    [[nodiscard]] QLayout* makePrivacyNote();

    AppLogger& logger_;
    const Localization& localization_;
    std::function<void()> openLogWindow_;
    std::vector<LogEntry> recentLogs_;
    LogStatistics statistics_;
    bool showingClearConfirmation_ = false;
    Label* count_;
    StatisticItem* total_;
    StatisticItem* warnings_;
    StatisticItem* errors_;
    QWidget* list_;
    QVBoxLayout* rows_;
    QTimer due_;  ///< one refresh for all that happens in a turn of the event loop
};

}  // namespace quorvane
