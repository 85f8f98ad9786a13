#include "shell/billing/ReviewRowParts.h"

#include "shell/look/Icons.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"
#include "shell/state/BillingReviewQueueView.h"
#include "store/Project.h"
#include "timeline/AppColorPalette.h"

#include <QPainter>
#include <QStyle>
#include <algorithm>

namespace quorvane::ReviewRowParts {
namespace {

constexpr int fieldPadding = 9;
constexpr int squareSize = 11;
constexpr int dotSize = 8;
constexpr int chevronSize = 16;
constexpr int chevronEnd = 9;
constexpr int buttonPadding = 11;
constexpr int glyphSize = 16;
constexpr int glyphGap = 6;

QColor statusColor(BillingStatus status) {
    const Theme& t = theme();
    switch (status) {
    case BillingStatus::review: return t.orange;
    case BillingStatus::billable: return t.ok;
    case BillingStatus::nonBillable: return t.control;
    case BillingStatus::excluded: return t.text3;
    }
    return {};
}

int markWidth(const Mark& mark) {
    if (mark.projectColor) return squareSize + 8;
    return mark.status ? dotSize + 6 : 0;
}

/// Draws parts that are described from left to right, mirrored where the layout is.
struct Placing {
    QRect whole;
    Qt::LayoutDirection direction;

    [[nodiscard]] QRect at(int start, int width) const {
        return QStyle::visualRect(direction, whole, {whole.left() + start, whole.top(), width, whole.height()});
    }
    [[nodiscard]] int startAligned() const {
        return static_cast<int>(QStyle::visualAlignment(direction, Qt::AlignLeft) | Qt::AlignVCenter);
    }
};

struct ButtonColors {
    QColor fill;
    QColor edge;
    QColor ink;
    QColor iconInk;
};

ButtonColors colorsOf(const StatusButton& button) {
    const Theme& t = theme();
    if (button.isChosen && button.status == BillingStatus::billable)
        return {t.okSoft, t.isHighContrast ? t.control : QColor(), t.ok, t.ok};
    if (button.isChosen) return {t.sunken, t.line, t.text2, t.text2};
    const QColor fill = button.press == Press::none ? t.surface : button.press == Press::hovered ? t.hover : t.press;
    return {fill, button.press == Press::none ? t.line : t.control, t.text, t.text2};
}

}  // namespace

Mark markOf(const Project& project) {
    return {.projectColor = project.color().value_or(""), .status = std::nullopt};
}

Field projectField(const Project* project, const Localization& localization) {
    if (project == nullptr) return {.text = qt(localization.text("not_set")), .isSet = false};
    return {.text = qt(project->name()), .mark = markOf(*project)};
}

Field statusField(BillingStatus status, const Localization& localization) {
    return {.text = qt(label(status, localization)), .mark = {.projectColor = std::nullopt, .status = status}};
}

void paintMark(QPainter& painter, const QRect& rectangle, const Mark& mark) {
    const QPointF middle = QRectF(rectangle).center();
    if (mark.projectColor) {
        const QRectF square(middle.x() - squareSize / 2.0, middle.y() - squareSize / 2.0, squareSize, squareSize);
        paintProjectDot(painter, square, AppColorPalette::projectTone(*mark.projectColor));
    } else if (mark.status) {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(statusColor(*mark.status));
        painter.drawEllipse(middle, dotSize / 2.0, dotSize / 2.0);
        painter.restore();
    }
}

void paintField(QPainter& painter, const QRect& rectangle, const Field& field, Qt::LayoutDirection direction) {
    const Theme& t = theme();
    paintPanel(painter, rectangle, Metrics::smallRadius, t.surface, field.isActive ? t.control : t.line);
    const Placing placing{rectangle, direction};
    const int mark = markWidth(field.mark);
    paintMark(painter, placing.at(fieldPadding, field.mark.projectColor ? squareSize : dotSize), field.mark);
    const int textStart = fieldPadding + mark;
    const int textWidth = std::max(0, rectangle.width() - textStart - chevronEnd - chevronSize - 4);
    painter.setFont(font(TypeRole::labelPlain));
    painter.setPen(field.isSet ? t.text : t.text3);
    painter.drawText(placing.at(textStart, textWidth), placing.startAligned(),
                     painter.fontMetrics().elidedText(field.text, Qt::ElideRight, textWidth));
    drawIcon(painter, placing.at(rectangle.width() - chevronEnd - chevronSize, chevronSize), QStringLiteral("down"),
             t.text2, chevronSize);
}

void paintButton(QPainter& painter, const QRect& rectangle, const StatusButton& button, Qt::LayoutDirection direction) {
    const ButtonColors colors = colorsOf(button);
    paintPanel(painter, rectangle, Metrics::smallRadius, colors.fill, colors.edge);
    const Placing placing{rectangle, direction};
    const QString icon = button.status == BillingStatus::billable ? QStringLiteral("check") : QStringLiteral("exclude");
    drawIcon(painter, placing.at(buttonPadding, glyphSize), icon, colors.iconInk, glyphSize);
    const int textStart = buttonPadding + glyphSize + glyphGap;
    painter.setFont(font(TypeRole::label));
    painter.setPen(colors.ink);
    painter.drawText(placing.at(textStart, rectangle.width() - textStart - buttonPadding + 4), placing.startAligned(),
                     button.text);
}

}  // namespace quorvane::ReviewRowParts
