#include "shell/cards/CardText.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPainter>
#include <QPainterPath>
#include <QRawFont>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

constexpr double outlinesFrom = 48;  ///< larger letters are painted as shapes

constexpr double sizeStep = 2;
constexpr double slant = 0.18;
constexpr int moreLines = 2;

QStringList familiesOf(CardFace face) {
    // What the face lacks: Chinese, Japanese and Korean, then Arabic.
    QStringList others{QStringLiteral("WenQuanYi Micro Hei"), QStringLiteral("DejaVu Sans")};
    switch (face) {
    case CardFace::sans: return QStringList{QStringLiteral("Inter")} + others;
    case CardFace::serif: return QStringList{QStringLiteral("DejaVu Serif")} + others;
    case CardFace::fixed: return QStringList{QStringLiteral("DejaVu Sans Mono")} + others;
    }
    return others;
}

/// Each line's height in sizes is at least this, so that marks above and below letters don't meet.
double pitchOf(const QTextLine& line, const TextLook& look, double size) {
    return std::max(look.pitch * size, line.ascent() + line.descent());
}

}  // namespace

QFont cardFont(const TextLook& look, double size) {
    QFont font;
    font.setFamilies(familiesOf(look.face));
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(size))));
    font.setWeight(static_cast<QFont::Weight>(look.weight));
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    font.setLetterSpacing(QFont::AbsoluteSpacing, look.spacing * size);
    return font;
}

CardText::CardText(const QString& text, const TextLook& look, const QSizeF& box) : look_(look) {
    const double least = look.leastSize > 0 ? std::min(look.leastSize, look.size) : look.size;
    bool isFitting = shrink(text, look.size, least, box);
    if (!isFitting && look.lastSize > 0) {
        look_.lines += moreLines;
        isFitting = shrink(text, least, std::min(least, look.lastSize), box);
    }
    if (!isFitting && !(layOut(text, size_, box.width(), true) && fits(box))) cut(text, box);
    if (look.isBalanced && !isCut_) balance(text, box);
    place(box.width());
}

CardText::CardText(CardText&&) noexcept = default;
CardText::~CardText() = default;

/// Lays the text out in the largest size in which it fits, else in the least.
bool CardText::shrink(const QString& text, double from, double least, const QSizeF& box) {
    for (double size = from;; size -= sizeStep) {
        const bool isFitting = layOut(text, std::max(size, least), box.width(), false) && fits(box);
        if (isFitting || size <= least) return isFitting;
    }
}

/// True if no line is wider than the box. A line that is not wide enough for its word is as wide as that.
bool CardText::layOut(const QString& text, double size, double width, bool breaksWords) {
    size_ = size;
    layout_ = std::make_unique<QTextLayout>(text, cardFont(look_, size));
    QTextOption option;
    option.setWrapMode(breaksWords ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::WordWrap);
    option.setTextDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    option.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);
    layout_->setTextOption(option);
    layout_->setCacheEnabled(true);
    lines_.clear();
    bool isNarrow = true;
    layout_->beginLayout();
    for (QTextLine line = layout_->createLine(); line.isValid(); line = layout_->createLine()) {
        line.setLineWidth(width);
        isNarrow &= line.naturalTextWidth() <= width + 0.5;
        lines_.push_back({.index = static_cast<int>(lines_.size())});
    }
    layout_->endLayout();
    return isNarrow;
}

bool CardText::fits(const QSizeF& box) const {
    return static_cast<int>(lines_.size()) <= look_.lines && height() <= box.height() + 0.5;
}

/// The narrowest width that needs no more lines.
void CardText::balance(const QString& text, const QSizeF& box) {
    const std::size_t count = lines_.size();
    if (count < 2) return;
    double enough = box.width();
    double little = box.width() / 2;
    while (enough - little > 4) {
        const double middle = (enough + little) / 2;
        const bool isEnough = layOut(text, size_, middle, false) && lines_.size() <= count;
        (isEnough ? enough : little) = middle;
    }
    // Where a word had to be broken it stays as it was.
    if (!layOut(text, size_, enough, false) || lines_.size() > count) layOut(text, size_, box.width(), true);
}

/// Keeps the lines for which there is room.
void CardText::cut(const QString& text, const QSizeF& box) {
    isCut_ = true;
    const double pitch = pitchOf(layout_->lineAt(0), look_, size_);
    const int room = std::max(1, std::min(look_.lines, static_cast<int>((box.height() + 0.5) / pitch)));
    if (room >= static_cast<int>(lines_.size())) return;
    const int start = layout_->lineAt(room - 1).textStart();
    const QFontMetricsF metrics(cardFont(look_, size_));
    const QString rest = metrics.elidedText(text.mid(start), Qt::ElideRight, box.width() - 1);
    layOut(text.left(start) + rest, size_, box.width(), true);
}

void CardText::place(double boxWidth) {
    const bool isRightToLeft = layout_->textOption().textDirection() == Qt::RightToLeft;
    double top = 0;
    for (Line& line : lines_) {
        const QTextLine shape = layout_->lineAt(line.index);
        const double width = shape.naturalTextWidth();
        const double pitch = pitchOf(shape, look_, size_);
        double left = 0;
        switch (look_.align) {
        case CardAlign::start: left = isRightToLeft ? boxWidth - width : 0; break;
        case CardAlign::left: break;
        case CardAlign::centre: left = (boxWidth - width) / 2; break;
        case CardAlign::right: left = boxWidth - width; break;
        }
        const double lineTop = top + (pitch - shape.ascent() - shape.descent()) / 2;
        line.x = left - shape.naturalTextRect().left();
        line.baseline = lineTop + shape.ascent();
        line.rect = QRectF(left, lineTop, width, shape.ascent() + shape.descent());
        top += pitch;
    }
}

double CardText::width() const {
    double widest = 0;
    for (const Line& line : lines_)
        widest = std::max(widest, layout_->lineAt(line.index).naturalTextWidth());
    return widest;
}

double CardText::height() const {
    double sum = 0;
    for (const Line& line : lines_)
        sum += pitchOf(layout_->lineAt(line.index), look_, size_);
    return sum;
}

double CardText::baseline() const {
    return lines_.empty() ? 0 : lines_.front().baseline;
}

std::vector<QRectF> CardText::lineRects() const {
    std::vector<QRectF> rects;
    rects.reserve(lines_.size());
    for (const Line& line : lines_)
        rects.push_back(line.rect);
    return rects;
}

/// The toolkit rounds the outline of a large glyph otherwise when it is first used than later. In the units of its
/// design it is exact.
void CardText::drawOutlines(QPainter& painter, const QTextLine& line, const QPointF& offset) {
    painter.setRenderHint(QPainter::Antialiasing);
    for (const QGlyphRun& run : line.glyphRuns()) {
        QRawFont design = run.rawFont();
        const double scale = design.pixelSize() / design.unitsPerEm();
        design.setPixelSize(design.unitsPerEm());
        const auto glyphs = run.glyphIndexes();
        const auto positions = run.positions();
        QPainterPath outlines;
        for (qsizetype i = 0; i < glyphs.size(); ++i) {
            const QPointF place = positions[i] + offset;
            outlines.addPath(QTransform(scale, 0, 0, scale, place.x(), place.y()).map(design.pathForGlyph(glyphs[i])));
        }
        painter.fillPath(outlines, painter.pen().brush());
    }
}

void CardText::draw(QPainter& painter, const QPointF& corner) const {
    for (const Line& line : lines_) {
        const QTextLine shape = layout_->lineAt(line.index);
        painter.save();
        painter.translate(corner + QPointF(line.x, line.baseline));
        if (look_.isSlanted) painter.shear(-slant, 0);
        const QPointF offset(-shape.x(), -shape.y() - shape.ascent());
        if (size_ >= outlinesFrom)
            drawOutlines(painter, shape, offset);
        else
            shape.draw(&painter, offset);
        painter.restore();
    }
}

}  // namespace quorvane
