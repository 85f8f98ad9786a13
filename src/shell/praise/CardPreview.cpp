#include "shell/praise/CardPreview.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"
#include "shell/praise/CardPicture.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

namespace quorvane {
namespace {

constexpr double largest = 0.68;  // of the card
constexpr int margin = 14;
constexpr double cardWidth = 600;
constexpr double cardHeight = 900;

}  // namespace

CardPreview::CardPreview(QWidget* parent) : QWidget(parent) {
    setAccessibleRole(*this, QAccessible::Graphic, QString());
}

void CardPreview::show(ShareImageWindow::Image image, const QString& placeholder) {
    image_ = std::move(image);
    placeholder_ = placeholder;
    update();
}

void CardPreview::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), theme().canvas);
    if (image_ == nullptr) {
        painter.setFont(quorvane::font(TypeRole::body));
        painter.setPen(theme().text2);
        painter.drawText(rect().adjusted(24, 0, -24, 0), Qt::AlignCenter | Qt::TextWordWrap, placeholder_);
        return;
    }
    const double scale = std::min({largest, (width() - 2 * margin) / cardWidth, (height() - 2 * margin) / cardHeight});
    const QSizeF size(std::round(cardWidth * scale), std::round(cardHeight * scale));
    // A body that scrolls is higher than what shows of it: the card stays at its top.
    const double top = std::min<double>(margin, std::round((height() - size.height()) / 2));
    const QRectF card(QPointF(std::round((width() - size.width()) / 2), top), size);
    paintShadow(painter, card, Metrics::cardRadius, Elevation::popUp);
    paintCardPicture(painter, card, Metrics::cardRadius, *image_);
}

}  // namespace quorvane
