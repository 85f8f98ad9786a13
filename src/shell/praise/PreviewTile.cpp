#include "shell/praise/PreviewTile.h"

#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"
#include "shell/praise/CardPicture.h"

#include <QPainter>
#include <utility>

namespace quorvane {
namespace {

constexpr int room = 5;  // for the ring of the chosen one
constexpr int nameGap = 3;
constexpr int sideRoom = 10;
constexpr double radius = 5;

}  // namespace

PreviewTile::PreviewTile(const QString& name, const QSize& size, QWidget* parent)
    : QPushButton(name, parent), size_(size) {
    setCheckable(true);
    setAutoExclusive(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setToolTip(name);
}

void PreviewTile::setImage(std::shared_ptr<const ShareImage> image) {
    if (image == image_) return;
    image_ = std::move(image);
    update();
}

QSize PreviewTile::sizeHint() const {
    return {size_.width() + 2 * sideRoom, size_.height() + 2 * room + nameGap + lineHeight(TypeRole::caption)};
}

QRect PreviewTile::picture() const {
    return {QPoint((width() - size_.width()) / 2, room), size_};
}

void PreviewTile::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const Theme& colors = theme();
    if (image_ != nullptr)
        paintCardPicture(painter, picture(), radius, *image_);
    else
        paintPanel(painter, picture(), radius, colors.sunken, colors.line2);
    if (isChecked() || underMouse()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(isChecked() ? colors.accent : colors.control, 2));
        painter.drawRoundedRect(QRectF(picture()).adjusted(-3, -3, 3, 3), radius + 3, radius + 3);
    }
    QFont nameFont = quorvane::font(TypeRole::caption);
    if (isChecked()) nameFont.setWeight(QFont::DemiBold);
    painter.setFont(nameFont);
    painter.setPen(isChecked() ? colors.text : colors.text2);
    const QRect place(0, picture().bottom() + room + nameGap, width(), lineHeight(TypeRole::caption));
    painter.drawText(place, Qt::AlignCenter, painter.fontMetrics().elidedText(text(), Qt::ElideRight, place.width()));
}

}  // namespace quorvane
