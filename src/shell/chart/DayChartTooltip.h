#pragma once

#include "platform/ApplicationIcons.h"
#include "timeline/DayTimelineGeometry.h"

#include <QColor>
#include <QIcon>
#include <QWidget>
#include <string>
#include <vector>

namespace quorvane {

/// The dark card beside the pointer: of the block under it (`HoverTooltip`), or of the range that is being drawn
/// (`TimeRangeTooltip`). It takes no events. The widget is larger than the card, for the shadow.
class DayChartTooltip : public QWidget {
public:
    static constexpr int cardWidth = 200;

    DayChartTooltip(const platform::ApplicationIcons& icons, QWidget* parent);

    void showBlock(const ProcessedActivityItem& item, const Localization& localization, QPointF topLeft,
                   const QRectF& bounds);
    void showRange(const std::vector<std::string>& lines, QPointF pointer, const QRectF& bounds);

    /// The card in coordinates of the parent.
    [[nodiscard]] QRect card() const;
    [[nodiscard]] const std::vector<std::string>& lines() const { return lines_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] int cardHeight() const;
    void showAt(QPointF topLeft, const QRectF& bounds);

    const platform::ApplicationIcons& icons_;
    std::vector<std::string> lines_;
    bool isBlock_ = false;
    QString appName_;
    QColor color_;
    Uuid block_;  ///< told of last
    QIcon icon_;  ///< the desktop's, of the application; null if it has none
};

}  // namespace quorvane
