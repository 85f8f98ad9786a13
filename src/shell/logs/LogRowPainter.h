#pragma once

#include "diagnostics/LogEntry.h"

#include <QRect>

class QPainter;

namespace quorvane {

/// Paints the four columns of an entry: time, level, module and message. Mirrored where the layout is.
namespace LogRowPainter {

/// A full row keeps time and message in fixed pitch; a compact one is a line of a card.
enum class Kind { full, compact };

void paint(QPainter& painter, const QRect& row, Qt::LayoutDirection direction, const LogEntry& entry, Kind kind);

}  // namespace LogRowPainter

}  // namespace quorvane
