#pragma once

#include "base/Signal.h"
#include "l10n/Localization.h"
#include "shell/state/LogViewerState.h"

#include <QWidget>

class QCheckBox;
class QLineEdit;

namespace quorvane {

/// The log window's head: level, search, follow, and what can be done with the log.
class LogToolBar : public QWidget {
public:
    LogToolBar(LogViewerState& state, const Localization& localization, QWidget* parent = nullptr);

    void focusSearch();
    Signal<> refreshPressed;
    Signal<> clearPressed;
    Signal<> exportPressed;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QWidget* makeLevels();
    void prepareSearch();

    LogViewerState& state_;
    const Localization& localization_;
    QLineEdit* search_;
    QCheckBox* follow_;
};

}  // namespace quorvane
