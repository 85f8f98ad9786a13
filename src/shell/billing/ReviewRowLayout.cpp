#include "shell/billing/ReviewRowLayout.h"

#include "shell/look/Painting.h"
#include "shell/look/Typography.h"

#include <QFontMetrics>
#include <QStyle>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int narrowBelow = 820;
constexpr int padding = 25;  // as the head of the sheet has it
constexpr int iconSize = 20;
constexpr int textStart = 57;
constexpr int leastHeight = 60;
constexpr int gap = 12;
constexpr int betweenButtons = 6;
constexpr int beforeControls = 16;
constexpr int besideButtonText = 2 * 11 + 16 + 6;  // padding, icon and gap of a small button
constexpr int projectWidth = 164;
constexpr int tightBelow = 900;  // the detail needs some of the project's room
constexpr int tightProjectWidth = 140;
constexpr int statusWidth = 118;

int scaled(int length) {
    return static_cast<int>(length * std::max(1.0, typeScale()));
}

int controlHeight() {
    return std::max(Metrics::smallHeight, lineHeight(TypeRole::label) + 8);
}

int buttonWidth(const QString& text) {
    return QFontMetrics(font(TypeRole::label)).horizontalAdvance(text) + besideButtonText;
}

}  // namespace

ReviewRowLayout reviewRowLayout(int width, Qt::LayoutDirection direction, const QString& billable,
                                const QString& exclude) {
    ReviewRowLayout row;
    const int words = lineHeight(TypeRole::bodyStrong) + lineHeight(TypeRole::labelPlain);
    const int lineOne = std::max(leastHeight, words + 24);
    const int controls = controlHeight();
    const int top = (lineOne - controls) / 2;
    const int excludeWidth = buttonWidth(exclude);
    const int billableWidth = buttonWidth(billable);
    row.exclude = {width - padding - excludeWidth, top, excludeWidth, controls};
    row.billable = {row.exclude.left() - betweenButtons - billableWidth, top, billableWidth, controls};
    int textEnd = row.billable.left();
    const bool isNarrow = width < narrowBelow;
    if (isNarrow) {
        const int room = width - padding - textStart - gap - scaled(statusWidth);
        row.project = {textStart, lineOne - 4, std::clamp(room, 60, scaled(projectWidth)), controls};
        row.status = {row.project.right() + 1 + gap, lineOne - 4, scaled(statusWidth), controls};
    } else {
        row.status = {row.billable.left() - gap - scaled(statusWidth), top, scaled(statusWidth), controls};
        const int project = scaled(width < tightBelow ? tightProjectWidth : projectWidth);
        row.project = {row.status.left() - gap - project, top, project, controls};
        textEnd = row.project.left();
    }
    row.height = lineOne + (isNarrow ? controls + 8 : 0);
    row.icon = {padding, (lineOne - iconSize) / 2, iconSize, iconSize};
    const int textTop = (lineOne - words) / 2;
    const int textWidth = std::max(0, textEnd - beforeControls - textStart);
    row.title = {textStart, textTop, textWidth, lineHeight(TypeRole::bodyStrong)};
    row.detail = {textStart, row.title.bottom() + 1, textWidth, lineHeight(TypeRole::labelPlain)};
    const QRect whole(0, 0, width, row.height);
    for (QRect* part : {&row.icon, &row.title, &row.detail, &row.project, &row.status, &row.billable, &row.exclude})
        *part = QStyle::visualRect(direction, whole, *part);
    return row;
}

}  // namespace quorvane
