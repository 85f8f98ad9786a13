#include "shell/logs/CompactLogEntryRow.h"

#include "shell/logs/LogRowPainter.h"
#include "shell/logs/LogRowText.h"
#include "shell/look/AccessibleRole.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QPainter>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int leastHeight = 34;  // with the line above

}  // namespace

CompactLogEntryRow::CompactLogEntryRow(const LogEntry& entry, QWidget* parent) : QWidget(parent), entry_(entry) {
    setAccessibleRole(*this, QAccessible::ListItem, LogRowText::spoken(entry));
    setToolTip(qt(entry.message));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize CompactLogEntryRow::sizeHint() const {
    return {320, std::max(leastHeight, lineHeight(TypeRole::labelPlain) + 16)};
}

void CompactLogEntryRow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(QRect(0, 0, width(), 1), theme().line2);
    LogRowPainter::paint(painter, rect().adjusted(0, 1, 0, 0), layoutDirection(), entry_, LogRowPainter::Kind::compact);
}

}  // namespace quorvane
