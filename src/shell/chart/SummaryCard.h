#pragma once

#include "base/Color.h"
#include "l10n/Localization.h"
#include "shell/chart/PaintedParts.h"
#include "shell/look/Card.h"
#include "timeline/ProjectTone.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// A line of a summary: who, and how long.
struct SummaryRow {
    std::string name;
    double hours = 0;
    double percentage = 0;
    Color color;                      ///< of an application
    std::optional<ProjectTone> tone;  ///< of a project
};

/// A card that lists hours in two columns, row by row. Assistive technology reads each line.
class SummaryCard : public Card, public PaintedParts {
public:
    /// `emptyText` stands there as long as there is no row.
    SummaryCard(const QString& title, QString emptyText, const Localization& localization, QWidget* parent = nullptr);

    void setRows(std::vector<SummaryRow> rows);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

    [[nodiscard]] int partCount() const override { return static_cast<int>(rows_.size()); }
    [[nodiscard]] QString partName(int part) const override;
    [[nodiscard]] QRect partRectangle(int part) const override;
    [[nodiscard]] QAccessible::Role partRole() const override { return QAccessible::ListItem; }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    [[nodiscard]] QRect titleRectangle() const;
    void paintRow(QPainter& painter, const SummaryRow& row, const QRect& rectangle) const;

    QString title_;
    QString emptyText_;
    const Localization& localization_;
    std::vector<SummaryRow> rows_;
};

}  // namespace quorvane
