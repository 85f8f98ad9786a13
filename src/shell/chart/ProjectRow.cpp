#include "shell/chart/ProjectRow.h"

#include "shell/chart/RowPainter.h"
#include "shell/look/Icons.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QKeyEvent>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int leastHeight = 44;
constexpr int padding = 10;
constexpr int dotSize = 14;
constexpr int plusSize = 16;
constexpr int gap = 8;
constexpr int textStart = padding + dotSize + 10;

int textHeight() {
    return lineHeight(TypeRole::bodyStrong) + lineHeight(TypeRole::caption);
}

}  // namespace

ProjectRow::ProjectRow(const QString& name, const QString& client, const std::string& color, QWidget* parent)
    : QAbstractButton(parent), name_(name), client_(client), color_(color) {
    setAccessibleName(name + QStringLiteral(", ") + client);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize ProjectRow::sizeHint() const {
    return {200, std::max(leastHeight, textHeight() + 10)};
}

QSize ProjectRow::minimumSizeHint() const {
    return {0, sizeHint().height()};
}

void ProjectRow::paintEvent(QPaintEvent*) {
    RowPainter row(*this);
    if (isDown())
        row.fill(rect(), Metrics::controlRadius, theme().press);
    else if (underMouse())
        row.fill(rect(), Metrics::controlRadius, theme().hover);
    const int middle = height() / 2;
    paintProjectDot(row.painter(), QRectF(row.placed({padding, middle - dotSize / 2, dotSize, dotSize})),
                    AppColorPalette::projectTone(color_));
    const QRect plus(width() - padding - plusSize, middle - plusSize / 2, plusSize, plusSize);
    drawIcon(row.painter(), QRectF(row.placed(plus)), QStringLiteral("plus"), theme().text2, plusSize);

    const int top = (height() - textHeight()) / 2;
    const QRect name(textStart, top, plus.left() - gap - textStart, lineHeight(TypeRole::bodyStrong));
    row.text(name, TypeRole::bodyStrong, theme().text, name_);
    row.text({textStart, name.bottom() + 1, name.width(), lineHeight(TypeRole::caption)}, TypeRole::caption,
             theme().text3, client_);
}

void ProjectRow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return click();
    QAbstractButton::keyPressEvent(event);
}

}  // namespace quorvane
