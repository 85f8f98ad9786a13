#pragma once

#include "base/Color.h"

#include <QString>
#include <QWidget>

namespace quorvane {

/// A line of the legend: an application, its hours as a number and as a bar, and its share. Right to left it is
/// mirrored.
class LegendRow : public QWidget {
public:
    struct Content {
        QString appName;
        QString hours;        ///< "2.7"
        QString percentage;   ///< "40.2"
        double fraction = 0;  ///< of the bar that is filled, 0 to 1
        Color color;
        friend bool operator==(const Content&, const Content&) = default;
    };
    LegendRow(Content content, const QString& accessibleName, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Content content_;
};

}  // namespace quorvane
