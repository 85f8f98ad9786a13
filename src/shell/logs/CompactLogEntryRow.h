#pragma once

#include "diagnostics/LogEntry.h"

#include <QWidget>

namespace quorvane {

/// An entry as a line of a card.
class CompactLogEntryRow : public QWidget {
public:
    explicit CompactLogEntryRow(const LogEntry& entry, QWidget* parent = nullptr);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    LogEntry entry_;
};

}  // namespace quorvane
