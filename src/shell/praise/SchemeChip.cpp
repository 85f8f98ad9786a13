#include "shell/praise/SchemeChip.h"

#include "shell/look/Controls.h"
#include "shell/look/Kind.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyle>

namespace quorvane {
namespace {

constexpr int shownColors = 6;
constexpr int padding = 8;
constexpr QSize swatch(34, 16);

}  // namespace

SchemeChip::SchemeChip(const QString& name, ColorScheme scheme, QWidget* parent)
    : QPushButton(name, parent), scheme_(scheme) {
    setCheckable(true);
    setAutoExclusive(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setKind(*this, "small");
    setToolTip(name);
}

void SchemeChip::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Theme& t = theme();
    const QColor ground = isChecked() ? t.accSoft : underMouse() ? t.hover : t.surface;
    paintPanel(painter, rect(), Metrics::controlRadius, ground, isChecked() ? t.accent : t.line);
    const QRect place =
        QStyle::visualRect(layoutDirection(), rect(), QRect(QPoint(padding, (height() - swatch.height()) / 2), swatch));
    QPainterPath clip;
    clip.addRoundedRect(place, 4, 4);
    painter.save();
    painter.setClipPath(clip);
    const double width = place.width() / static_cast<double>(shownColors);
    for (int i = 0; i < shownColors; ++i)
        painter.fillRect(QRectF(place.left() + i * width, place.top(), width + 0.5, place.height()),
                         toQColor(colors(scheme_)[static_cast<std::size_t>(i)]));
    painter.restore();
    const QRect words = QStyle::visualRect(layoutDirection(), rect(),
                                           rect().adjusted(padding + swatch.width() + padding, 0, -padding / 2, 0));
    painter.setPen(isChecked() ? t.accInk : t.text);
    const Qt::Alignment side = isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft;
    painter.drawText(words, static_cast<int>(Qt::AlignVCenter | side),
                     painter.fontMetrics().elidedText(text(), Qt::ElideRight, words.width()));
}

}  // namespace quorvane
