#pragma once

#include "shell/look/Typography.h"

#include <QColor>
#include <QString>

class QPainter;
class QWidget;

namespace quorvane {

/// Draws lines of text one under another into a card, aligned to the start; words that are too long are cut with
/// "…".
class CardText {
public:
    /// Distances from the card's edges where its lines begin and end, and of the first one from its top.
    CardText(QPainter& painter, const QWidget& card, int start, int end, int top);

    void line(const QString& text, TypeRole role, const QColor& ink) { write(text, font(role), lineHeight(role), ink); }
    /// A number, which is never cut but smaller where it is too long.
    void number(const QString& text, TypeRole role, const QColor& ink);
    void skip(int height) { y_ += height; }
    [[nodiscard]] bool isCut() const { return isCut_; }

private:
    void write(const QString& text, const QFont& face, int height, const QColor& ink);

    QPainter& painter_;
    const QWidget& card_;
    int start_;
    int width_;
    int y_;
    bool isCut_ = false;
};

}  // namespace quorvane
