#pragma once

#include <QColor>
#include <QFrame>

namespace quorvane {

struct Theme;

/// A quiet ground with round corners under a few things. `fill` is a member of `Theme`.
class Well : public QFrame {
public:
    explicit Well(QColor Theme::*fill, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor Theme::*fill_;
};

}  // namespace quorvane
