#include "shell/look/Icons.h"

#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

namespace quorvane {
namespace {

const QString templates = QStringLiteral(":/icons/");

/// The file's text with ink and ground in their places; empty where there is no such file.
QByteArray inkedSvg(const QString& name, const QColor& ink, const QColor& ground) {
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("There is no icon \"%s\".", qUtf8Printable(name));
        return {};
    }
    QByteArray text = file.readAll();
    text.replace("#000001", ink.name(QColor::HexRgb).toLatin1());
    text.replace("#FFFFFE", ground.name(QColor::HexRgb).toLatin1());
    return text;
}

QPixmap rendered(const QByteArray& svg, double opacity, int size, double devicePixelRatio) {
    const int side = std::max(1, static_cast<int>(std::lround(size * devicePixelRatio)));
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QSvgRenderer renderer(svg);
    QPainter painter(&pixmap);
    painter.setOpacity(opacity);
    renderer.render(&painter, QRectF(0, 0, side, side));
    painter.end();
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

class TemplateIconEngine : public QIconEngine {
public:
    explicit TemplateIconEngine(QString name) : name_(std::move(name)) {}

    void paint(QPainter* painter, const QRect& rectangle, QIcon::Mode mode, QIcon::State /*state*/) override {
        drawIcon(*painter, rectangle, name_, ink(mode), std::min(rectangle.width(), rectangle.height()));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) override {
        return iconPixmap(name_, ink(mode), std::min(size.width(), size.height()));
    }

    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/, qreal scale) override {
        // The size is in device pixels already.
        const double side = std::min(size.width(), size.height());
        return iconPixmap(name_, ink(mode), static_cast<int>(std::lround(side / scale)), scale);
    }

    // What other icons are called by has no slash in front.
    [[nodiscard]] QString iconName() override { return templates + name_; }
    [[nodiscard]] bool isNull() override { return false; }
    [[nodiscard]] QIconEngine* clone() const override { return new TemplateIconEngine(name_); }

private:
    static QColor ink(QIcon::Mode mode) {
        return mode == QIcon::Disabled ? withOpacity(theme().text3, 0.75) : theme().text;
    }

    QString name_;
};

/// What a function paints into a square in the middle.
class PaintedIconEngine : public QIconEngine {
public:
    using Paint = std::function<void(QPainter& painter, const QRectF& square)>;

    PaintedIconEngine(int side, Paint paint) : side_(side), paint_(std::move(paint)) {}

    void paint(QPainter* painter, const QRect& rectangle, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        QRectF square(0, 0, side_, side_);
        square.moveCenter(QRectF(rectangle).center());
        paint_(*painter, square);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }
    [[nodiscard]] bool isNull() override { return false; }
    [[nodiscard]] QIconEngine* clone() const override { return new PaintedIconEngine(side_, paint_); }

private:
    int side_;
    Paint paint_;
};

}  // namespace

QPixmap iconPixmap(const QString& name, const QColor& ink, int size, double devicePixelRatio, const QColor& ground) {
    const QString key = QStringLiteral("quorvane/%1/%2/%3/%4/%5")
                            .arg(name, ink.name(QColor::HexArgb), ground.name())
                            .arg(size)
                            .arg(devicePixelRatio);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) return pixmap;
    const QByteArray svg = inkedSvg(name, ink, ground);
    if (svg.isEmpty()) return {};
    pixmap = rendered(svg, ink.alphaF(), size, devicePixelRatio);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

QIcon icon(const QString& name) {
    return QIcon(new TemplateIconEngine(name));
}

QIcon projectIcon(const std::string& toneName, int side) {
    return QIcon(new PaintedIconEngine(side, [toneName](QPainter& painter, const QRectF& square) {
        paintProjectDot(painter, square, AppColorPalette::projectTone(toneName));
    }));
}

QIcon dotIcon(QColor Theme::*ink) {
    constexpr int side = 8;
    return QIcon(new PaintedIconEngine(side, [ink](QPainter& painter, const QRectF& square) {
        paintPanel(painter, square, side / 2.0, theme().*ink, {});
    }));
}

QString iconName(const QIcon& icon) {
    const QString path = icon.name();
    return path.startsWith(templates) ? path.mid(templates.size()) : QString();
}

bool isDirectionalIcon(const QString& name) {
    static const std::array<QLatin1String, 4> names{QLatin1String("left"), QLatin1String("right"),
                                                    QLatin1String("enter"), QLatin1String("share")};
    return std::find(names.begin(), names.end(), name) != names.end();
}

void drawIcon(QPainter& painter, const QRectF& rectangle, const QString& name, const QColor& ink, int size,
              Qt::LayoutDirection direction, const QColor& ground) {
    const double ratio = painter.device()->devicePixelRatioF();
    const QPixmap pixmap = iconPixmap(name, ink, size, ratio, ground);
    if (pixmap.isNull()) return;
    painter.save();
    const QTransform device = painter.deviceTransform();
    QPointF corner = rectangle.center() - QPointF(size / 2.0, size / 2.0);
    if (device.type() <= QTransform::TxScale) {
        // On whole device pixels, as a pixmap between them is blurred.
        const QPointF mapped = device.map(corner);
        corner = device.inverted().map(QPointF(std::round(mapped.x()), std::round(mapped.y())));
    }
    if (direction == Qt::RightToLeft && isDirectionalIcon(name)) {
        painter.translate(2 * corner.x() + size, 0);
        painter.scale(-1, 1);
    }
    painter.drawPixmap(QRectF(corner, QSizeF(size, size)), pixmap, QRectF(pixmap.rect()));
    painter.restore();
}

}  // namespace quorvane
