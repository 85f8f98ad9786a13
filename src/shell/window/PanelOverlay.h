#pragma once

#include "base/Signal.h"

#include <QWidget>

namespace quorvane {

/// Shows a panel that has no column of its own over the whole page: the scrim behind, the panel in the middle, the
/// focus inside. It doesn't own the panel. Esc asks to close.
class PanelOverlay : public QWidget {
public:
    /// `name` is what assistive technology calls it.
    PanelOverlay(QWidget& page, QWidget& panel, int width, const QString& name);

    Signal<> closeWanted;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void place();

    QWidget& panel_;
    int width_;
};

}  // namespace quorvane
