#include "shell/look/HouseStyle.h"

namespace quorvane {

HouseStyle::HouseStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

int HouseStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* returnData) const {
    switch (hint) {
    case SH_ToolTip_WakeUpDelay: return 500;
    case SH_EtchDisabledText:
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_ComboBox_Popup:  // below the field, not over it
        return 0;
    default: return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

}  // namespace quorvane
