#include "shell/chart/RowsArea.h"

#include "shell/look/AccessibleRole.h"

#include <QEvent>
#include <QVBoxLayout>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int leastHeight = 64;  // a row, and enough of the next to see that there is one

}  // namespace

RowsArea::RowsArea(const QString& name, QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    viewport()->setAutoFillBackground(false);
    auto* const content = new QWidget;
    content->setAutoFillBackground(false);
    setAccessibleRole(*content, QAccessible::List, name);
    rows_ = new QVBoxLayout(content);
    setWidget(content);
    content->setAutoFillBackground(false);  // a scroll area turns it on
    content->installEventFilter(this);
}

void RowsArea::add(QWidget* row) {
    rows_->addWidget(row);
    row->show();  // at once: a layout counts what is visible
    updateGeometry();
}

void RowsArea::clear() {
    while (auto* const item = rows_->takeAt(0)) {
        if (auto* const row = item->widget()) {
            row->hide();
            row->deleteLater();
        }
        delete item;
    }
    updateGeometry();
}

QSize RowsArea::sizeHint() const {
    return {widget()->sizeHint().width(), widget()->sizeHint().height()};
}

QSize RowsArea::minimumSizeHint() const {
    return {0, std::min(leastHeight, widget()->sizeHint().height())};
}

bool RowsArea::eventFilter(QObject* watched, QEvent* event) {
    if (watched == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}

}  // namespace quorvane
