#pragma once

#include "base/Signal.h"
#include "shell/look/FocusRing.h"

#include <QStringList>
#include <QWidget>

namespace quorvane {

/// One of a few, side by side. One tab stop; arrows move the choice, mirrored from right to left. For assistive
/// technology a list of radio buttons (`SegmentedControl` brings its own interface).
class SegmentedControl : public QWidget, public FocusOutline {
public:
    /// `name` is its accessible name.
    SegmentedControl(const QStringList& texts, const QString& name, QWidget* parent = nullptr);

    [[nodiscard]] int current() const { return current_; }
    void setCurrent(int index);       ///< without `chosen`
    void setCompact(bool isCompact);  ///< 28 instead of 32 high
    [[nodiscard]] const QStringList& texts() const { return texts_; }
    [[nodiscard]] QRect segment(int index) const;
    void choose(int index);

    /// The user has chosen another one.
    Signal<int> chosen;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    [[nodiscard]] QRect focusOutline() const override { return rect(); }
    [[nodiscard]] double focusRadius() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] int segmentAt(const QPointF& position) const;

    QStringList texts_;
    int current_ = 0;
    int hovered_ = -1;
    bool isCompact_ = false;
};

}  // namespace quorvane
