#include "shell/export/ProjectSelectionCard.h"

#include "shell/look/Icons.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QPainter>
#include <QStyle>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int leastHeight = 62;
constexpr int padding = 15;
constexpr int boxSide = 18;
constexpr int boxRadius = 5;
constexpr int checkSize = 14;
constexpr int dotSide = 14;
constexpr int rowTextStart = 45;
constexpr double selectedEdge = 2;

int wordsHeight() {
    return lineHeight(TypeRole::bodyStrong) + lineHeight(TypeRole::labelPlain);
}

}  // namespace

ProjectSelectionCard::ProjectSelectionCard(const Content& content, const Localization& localization, QWidget* parent)
    : QPushButton(qt(content.name), parent), content_(content), selected_(qt(localization.text("selected"))),
      notSelected_(qt(localization.text("not_selected"))) {
    setCheckable(true);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    setAccessibleName(qt(content.name) + QStringLiteral(", ") + qt(content.client));
    connect(this, &QAbstractButton::toggled, this, [this] { sayState(); });
    sayState();
}

QSize ProjectSelectionCard::sizeHint() const {
    return {240, std::max(leastHeight, wordsHeight() + 20)};
}

QSize ProjectSelectionCard::minimumSizeHint() const {
    return {120, sizeHint().height()};
}

void ProjectSelectionCard::sayState() {
    setAccessibleDescription(isChecked() ? selected_ : notSelected_);
}

void ProjectSelectionCard::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Theme& t = theme();
    QColor ground = isChecked() ? t.accSoft : t.surface;
    if (!isChecked() && underMouse()) ground = isDown() ? t.press : t.hover;
    paintPanel(painter, rect(), Metrics::cardRadius, ground, t.line);
    if (isChecked()) {
        painter.setPen(QPen(t.accent, selectedEdge));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), Metrics::cardRadius - 1,
                                Metrics::cardRadius - 1);
    }
    paintCheckBox(painter);
    paintWords(painter);
    const QRect dot(width() - padding - dotSide, (height() - dotSide) / 2, dotSide, dotSide);
    paintProjectDot(painter, QStyle::visualRect(layoutDirection(), rect(), dot),
                    AppColorPalette::projectTone(content_.color));
}

void ProjectSelectionCard::paintCheckBox(QPainter& painter) const {
    const Theme& t = theme();
    const QRect box =
        QStyle::visualRect(layoutDirection(), rect(), QRect(padding - 1, (height() - boxSide) / 2, boxSide, boxSide));
    const QColor field = t.isDark ? t.sunken : t.surface;
    paintPanel(painter, box, boxRadius, isChecked() ? t.accFill : field, isChecked() ? t.accFill : t.control);
    if (isChecked()) drawIcon(painter, box, QStringLiteral("check"), t.onFill, checkSize);
}

void ProjectSelectionCard::paintWords(QPainter& painter) const {
    const Theme& t = theme();
    const int top = (height() - wordsHeight()) / 2;
    const int room = width() - rowTextStart - padding - dotSide - 8;
    const auto alignment =
        static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter));
    const auto write = [&](int y, TypeRole role, const QColor& ink, const std::string& words) {
        painter.setFont(quorvane::font(role));
        painter.setPen(ink);
        const QRect place = QStyle::visualRect(layoutDirection(), rect(), {rowTextStart, y, room, lineHeight(role)});
        painter.drawText(place, alignment, painter.fontMetrics().elidedText(qt(words), Qt::ElideRight, room));
    };
    write(top, TypeRole::bodyStrong, t.text, content_.name);
    write(top + lineHeight(TypeRole::bodyStrong), TypeRole::labelPlain, t.text3, content_.client);
}

}  // namespace quorvane
