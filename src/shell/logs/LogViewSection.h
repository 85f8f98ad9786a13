#pragma once

#include "diagnostics/AppLogger.h"
#include "l10n/Localization.h"

#include <QColor>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <vector>

class QListView;

namespace quorvane {

class Label;
class LogRows;
struct Theme;

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
    /// A number above what it counts. Read as one: "Total: 318".
    struct Statistic {
        QWidget* well = nullptr;
        Label* value = nullptr;
        QString label;
        void show(int count) const;
    };
    [[nodiscard]] static Statistic statistic(const QString& label, QColor Theme::*color);
    [[nodiscard]] QLayout* head();
    [[nodiscard]] QLayout* statistics();
    [[nodiscard]] QLayout* actions();
    [[nodiscard]] QLayout* privacyNote();
    void prepareList();
    void refresh();
    void askToClear();

    AppLogger& logger_;
    const Localization& localization_;
    std::function<void()> openLogWindow_;
    bool showingClearConfirmation_ = false;
    Label* count_;
    Statistic total_;
    Statistic warnings_;
    Statistic errors_;
    QListView* list_;
    LogRows* rows_;
    Label* none_;
    QTimer due_;  ///< one refresh for all that happens in a turn of the event loop
};

}  // namespace quorvane
