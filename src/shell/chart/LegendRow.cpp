#include "shell/chart/LegendRow.h"

#include "shell/chart/RowPainter.h"
#include "shell/look/AccessibleRole.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <algorithm>

namespace quorvane {
namespace {

constexpr int leastHeight = 46;
constexpr int markSize = 10;
constexpr int textStart = 18;
constexpr int gap = 8;
constexpr int shareWidth = 46;
constexpr int barHeight = 4;
constexpr int lineGap = 5;

int contentHeight() {
    return lineHeight(TypeRole::bodyStrong) + lineGap + lineHeight(TypeRole::caption);
}

}  // namespace

LegendRow::LegendRow(Content content, const QString& accessibleName, QWidget* parent)
    : QWidget(parent), content_(std::move(content)) {
    setAccessibleRole(*this, QAccessible::ListItem, accessibleName);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize LegendRow::sizeHint() const {
    return {160, std::max(leastHeight, contentHeight() + 7)};
}

QSize LegendRow::minimumSizeHint() const {
    return {0, sizeHint().height()};
}

void LegendRow::paintEvent(QPaintEvent*) {
    RowPainter row(*this);
    const int top = (height() - contentHeight()) / 2;
    const QRect first(0, top, width(), lineHeight(TypeRole::bodyStrong));
    const QRect second(0, first.bottom() + lineGap + 1, width(), lineHeight(TypeRole::caption));

    row.fill({0, top + (first.height() - markSize) / 2, markSize, markSize}, 3, toQColor(content_.color));
    const int hours = row.figures(first, TypeRole::bodyStrong, theme().text, content_.hours + QStringLiteral(" h"));
    row.text(first.adjusted(textStart, 0, -(hours + gap), 0), TypeRole::bodyStrong, theme().text, content_.appName);

    const QRect track(textStart, second.top() + (second.height() - barHeight) / 2, width() - textStart - shareWidth,
                      barHeight);
    row.fill(track, barHeight / 2.0, theme().sunken);
    const int filled = std::max(barHeight, qRound(track.width() * content_.fraction));
    if (content_.fraction > 0)
        row.fill({track.left(), track.top(), filled, barHeight}, barHeight / 2.0, toQColor(content_.color));
    row.figures(second, TypeRole::caption, theme().text3, content_.percentage + '%');
}

}  // namespace quorvane
