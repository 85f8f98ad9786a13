#include "shell/export/ProgressLine.h"

#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QPainter>
#include <QStyle>

namespace quorvane {
namespace {

constexpr int thickness = 6;

}  // namespace

ProgressLine::ProgressLine(const QString& name, QWidget* parent) : QProgressBar(parent) {
    setAccessibleName(name);
    setTextVisible(false);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize ProgressLine::sizeHint() const {
    return {200, thickness};
}

QSize ProgressLine::minimumSizeHint() const {
    return {40, thickness};
}

void ProgressLine::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor edge = theme().isHighContrast ? theme().control : QColor();
    paintPanel(painter, rect(), thickness / 2.0, theme().press, edge);
    if (maximum() <= minimum() || value() <= minimum()) return;
    const double part = static_cast<double>(value() - minimum()) / (maximum() - minimum());
    const QRect done(0, 0, static_cast<int>(part * width()), height());
    paintPanel(painter, QStyle::visualRect(layoutDirection(), rect(), done), thickness / 2.0, theme().accFill, {});
}

}  // namespace quorvane
