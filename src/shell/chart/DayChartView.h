#pragma once

#include "base/Signal.h"
#include "l10n/Localization.h"
#include "platform/ApplicationIcons.h"
#include "platform/RunLoop.h"
#include "timeline/DayTimelineChart.h"

#include <QAbstractScrollArea>
#include <memory>

namespace quorvane {

/// The 24 hours of a day as a scrolling column: shows what the chart's caches hold and passes gestures on to it. Its
/// blocks and bars are items for assistive technology. The chart is as wide as the view without `besideChart`.
class DayChartView : public QAbstractScrollArea {
public:
    static constexpr int besideChart = 12;  ///< at the right, for the scroll bar and the ring of a chosen block

    DayChartView(DayTimelineChart& chart, platform::RunLoop& runLoop, const platform::ApplicationIcons& icons,
                 const Localization& localization, QWidget* parent = nullptr);
    ~DayChartView() override;

    /// The chosen block in coordinates of this widget, as far as it is on screen; null if there is none.
    [[nodiscard]] QRect selectedBlock() const;

    /// What stands on a day without records.
    void setEmptyTexts(const QString& title, const QString& text);

    /// The user wants to give the block a category.
    Signal<const ProcessedActivityItem&> categoryWanted;

    struct Parts;
    [[nodiscard]] Parts& parts() const { return *parts_; }  ///< for this folder

protected:
    bool viewportEvent(QEvent* event) override;
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    std::unique_ptr<Parts> parts_;
};

}  // namespace quorvane
