#pragma once

#include "shell/cards/CardText.h"

#include <QBrush>
#include <QPainter>
#include <QString>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

[[nodiscard]] inline QColor toQt(Color color) {
    return {color.red, color.green, color.blue};
}
[[nodiscard]] inline QColor toQt(Color color, double opacity) {
    QColor faint = toQt(color);
    faint.setAlphaF(static_cast<float>(opacity));
    return faint;
}

/// A text that was placed, for those who check that all of it can be read. Positions are the card's.
struct PlacedText {
    QString text;
    QRectF box;                 ///< the room that it had
    std::vector<QRectF> lines;  ///< the room that it took
    double size = 0;
    int weight = 400;
    Color ink;
    bool isCut = false;  ///< it ends with "…"
};

/// Paints on a card and keeps account of its texts.
class CardCanvas {
public:
    enum class Texts { drawn, leftOut };

    explicit CardCanvas(QPainter& painter, Texts texts = Texts::drawn) : painter_(painter), texts_(texts) {}

    [[nodiscard]] QPainter& painter() { return painter_; }

    /// Draws the text at the top of the box and returns where it ends; a blank one takes no room. A line feed in it is
    /// a blank as any other. `brush` paints it instead of its ink.
    double text(const QRectF& box, const std::string& text, const TextLook& look,
                const std::optional<QBrush>& brush = std::nullopt);
    /// The same in the middle of the height.
    void textInMiddle(const QRectF& box, const std::string& text, const TextLook& look,
                      const std::optional<QBrush>& brush = std::nullopt);
    /// A line of text whose letters stand on `baseline`, between the sides of the box. Returns its width.
    double textOnBaseline(const QRectF& box, double baseline, const std::string& text, const TextLook& look,
                          const std::optional<QBrush>& brush = std::nullopt);
    /// The size that it takes.
    [[nodiscard]] static QSizeF sizeOf(const std::string& text, const TextLook& look, const QSizeF& box);

    [[nodiscard]] const std::vector<PlacedText>& placedTexts() const { return placed_; }

private:
    void place(const CardText& made, const QPointF& corner, const QRectF& box, const QString& text,
               const TextLook& look, const std::optional<QBrush>& brush);

    QPainter& painter_;
    Texts texts_;
    std::vector<PlacedText> placed_;
};

}  // namespace quorvane
