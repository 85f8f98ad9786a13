#pragma once

#include <QProxyStyle>

namespace quorvane {

/// The style below the style sheet: Fusion on every desktop, with our delays and nothing engraved.
class HouseStyle : public QProxyStyle {
public:
    HouseStyle();
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                QStyleHintReturn* returnData) const override;
};

}  // namespace quorvane
