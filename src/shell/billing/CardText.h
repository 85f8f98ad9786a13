#pragma once

#include "shell/look/Typography.h"

#include <QColor>
#include <QString>

class QPainter;
class QWidget;

namespace quorvane {

/// Draws lines of text one under another into a card, aligned to the start and cut with "…" where they are too long.
class CardText {
public:
    /// Distances from the card's edges where its lines begin and end, and of the first one from its top.
    CardText(QPainter& painter, const QWidget& card, int start, int end, int top);

    void line(const QString& text, TypeRole role, const QColor& ink);
    void skip(int height) { y_ += height; }
    [[nodiscard]] bool isCut() const { return isCut_; }

private:
    QPainter& painter_;
    const QWidget& card_;
    int start_;
    int width_;
    int y_;
    bool isCut_ = false;
};

}  // namespace quorvane
