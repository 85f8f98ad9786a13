#include "shell/billing/ReviewRowFields.h"

#include "shell/look/Controls.h"
#include "shell/look/Kind.h"

#include <QKeyEvent>
#include <QPainter>

namespace quorvane {
namespace {

constexpr int markSize = 14;

QIcon iconOf(const ReviewRowParts::Mark& mark, double devicePixelRatio) {
    QPixmap pixmap(QSize(markSize, markSize) * devicePixelRatio);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    ReviewRowParts::paintMark(painter, {0, 0, markSize, markSize}, mark);
    painter.end();
    return pixmap;
}

}  // namespace

ReviewRowCombo::ReviewRowCombo(const QString& name, QWidget* parent) : QComboBox(parent) {
    setKind(*this, "small quiet");
    setAccessibleName(name);
    setToolTip(name);
    setIconSize({markSize, markSize});
    setAttribute(Qt::WA_Hover);
}

void ReviewRowCombo::addChoice(const QString& text, const ReviewRowParts::Mark& mark) {
    addItem(iconOf(mark, devicePixelRatioF()), text);
}

void ReviewRowCombo::show(const ReviewRowParts::Field& field, int choice) {
    field_ = field;
    setCurrentIndex(choice);
    update();
}

void ReviewRowCombo::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    ReviewRowParts::Field field = field_;
    field.isActive = underMouse() || hasFocus();
    ReviewRowParts::paintField(painter, rect(), field, layoutDirection());
}

ReviewRowButton::ReviewRowButton(const QString& text, BillingStatus status, QWidget* parent)
    : QPushButton(text, parent), status_(status) {
    setKind(*this, "small");
    setCheckable(true);
}

void ReviewRowButton::paintEvent(QPaintEvent* /*event*/) {
    using ReviewRowParts::Press;
    QPainter painter(this);
    const Press press = isDown() ? Press::down : underMouse() ? Press::hovered : Press::none;
    ReviewRowParts::paintButton(painter, rect(),
                                {.text = text(), .status = status_, .isChosen = isChecked(), .press = press},
                                layoutDirection());
}

void ReviewRowButton::keyPressEvent(QKeyEvent* event) {
    // Buttons take these for a way to their neighbours; here they lead to the next row.
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) return event->ignore();
    QPushButton::keyPressEvent(event);
}

}  // namespace quorvane
