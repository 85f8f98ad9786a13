#pragma once

#include "base/Color.h"

#include <QFont>
#include <QRectF>
#include <QString>
#include <memory>
#include <vector>

class QPainter;
class QTextLayout;
class QTextLine;

namespace quorvane {

enum class CardFace { sans, serif, fixed };

/// Where lines stand in their box. `start` is where reading begins: right for Arabic.
enum class CardAlign { start, left, centre, right };

/// How a text of a card looks, and how it may be made to fit.
struct TextLook {
    CardFace face = CardFace::sans;
    double size = 16;      ///< in pixels
    double leastSize = 0;  ///< it is made smaller down to this in steps of 2; 0: never
    double lastSize = 0;   ///< in two lines more, down to this, before anything is cut; 0: never
    int weight = 400;      ///< 100 to 900
    Color ink;
    double pitch = 1.3;  ///< from line to line, in sizes
    double spacing = 0;  ///< between letters, in sizes
    CardAlign align = CardAlign::start;
    int lines = 1;  ///< at most
    bool isSlanted = false;
    bool isBalanced = false;  ///< lines of about the same length
};

/// The font of a look in some size. Families are named and neither hinting nor the screen's subpixels take part, so
/// that a card is the same wherever its fonts are installed.
[[nodiscard]] QFont cardFont(const TextLook& look, double size);

/// A text, not an empty one, broken into lines that fit into a box: in the look's size, or smaller, or, where it
/// doesn't fit in any, cut with "…". Lines break between words; inside of one only where it is wider than the box in
/// the least size.
class CardText {
public:
    CardText(const QString& text, const TextLook& look, const QSizeF& box);
    CardText(CardText&&) noexcept;
    ~CardText();

    [[nodiscard]] double size() const { return size_; }
    [[nodiscard]] double width() const;   ///< of the widest line
    [[nodiscard]] double height() const;  ///< of all of them
    [[nodiscard]] bool isCut() const { return isCut_; }
    [[nodiscard]] double baseline() const;  ///< of the first line, from the top
    /// The lines' boxes from ascent to descent in a box at the origin, as wide as asked for.
    [[nodiscard]] std::vector<QRectF> lineRects() const;

    void draw(QPainter& painter, const QPointF& corner) const;

private:
    static void drawOutlines(QPainter& painter, const QTextLine& line, const QPointF& offset);
    struct Line {
        int index = 0;
        double x = 0;  ///< of the line's own origin
        double baseline = 0;
        QRectF rect;
    };

    bool layOut(const QString& text, double size, double width, bool breaksWords);
    [[nodiscard]] bool fits(const QSizeF& box) const;
    [[nodiscard]] bool shrink(const QString& text, double from, double least, const QSizeF& box);
    void balance(const QString& text, const QSizeF& box);
    void cut(const QString& text, const QSizeF& box);
    void place(double boxWidth);

    TextLook look_;
    std::unique_ptr<QTextLayout> layout_;
    std::vector<Line> lines_;
    double size_ = 0;
    bool isCut_ = false;
};

}  // namespace quorvane
