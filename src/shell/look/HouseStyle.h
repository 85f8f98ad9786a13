#pragma once

#include <QProxyStyle>

namespace quorvane {

/// How every standard control of the program looks: Fusion below, with colours of `Theme`, sizes of `Metrics` and what
/// `Kind.h` says of a control. It also keeps manners that all controls share: Enter presses a button, Home and End
/// choose the first and the last tab, and the wheel turns over a page without changing the fields under it.
class HouseStyle : public QProxyStyle {
public:
    HouseStyle();

    using QProxyStyle::polish;
    void polish(QWidget* widget) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                         const QWidget* widget) const override;
    [[nodiscard]] QRect subElementRect(SubElement element, const QStyleOption* option,
                                       const QWidget* widget) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                       const QWidget* widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                QStyleHintReturn* returnData) const override;
    [[nodiscard]] QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                                     const QWidget* widget) const override;
};

}  // namespace quorvane
