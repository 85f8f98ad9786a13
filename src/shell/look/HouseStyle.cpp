#include "shell/look/HouseStyle.h"

#include "shell/look/HouseStyleParts.h"
#include "shell/look/Icons.h"
#include "shell/look/Kind.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QCalendarWidget>
#include <QComboBox>
#include <QFocusFrame>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QStyledItemDelegate>
#include <QTabBar>
#include <QTextCharFormat>
#include <QTextEdit>
#include <QToolButton>
#include <algorithm>

namespace quorvane {
namespace {

namespace Parts = HouseStyleParts;

constexpr int menuMargin = 5;
constexpr int checkHeight = 24;
constexpr int checkGap = 8;
constexpr int tableHeadHeight = 36;
constexpr int tablePadding = 16;
constexpr int textMargin = 7;

bool isField(const QWidget& widget) {
    return qobject_cast<const QComboBox*>(&widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr;
}

/// Text of several lines is a field as one line is: the style paints its ground, and its own is clear.
void polishText(QAbstractScrollArea& text) {
    setKind(text, "field", true);
    text.setFrameShape(QFrame::NoFrame);
    text.setFrameShape(QFrame::StyledPanel);  // its margins are asked for anew
    text.viewport()->setAutoFillBackground(false);
}

/// A page that scrolls shows what lies behind it.
void polishPage(QScrollArea& page) {
    page.setFrameShape(QFrame::NoFrame);
    page.viewport()->setAutoFillBackground(false);
    if (page.widget() != nullptr) page.widget()->setAutoFillBackground(false);
}

void polishButton(QAbstractButton& button) {
    button.setAttribute(Qt::WA_Hover);
    if (qobject_cast<QPushButton*>(&button) == nullptr && qobject_cast<QToolButton*>(&button) == nullptr) return;
    button.setFont(font(isKind(&button, "small") ? TypeRole::label : TypeRole::bodyStrong));
}

/// The list that a combo has opened, in a frame: both are Qt's own.
bool isComboFrame(const QWidget& widget) {
    return widget.inherits("QComboBoxPrivateContainer");
}

bool isComboList(const QWidget& widget) {
    return widget.inherits("QComboBoxListView");
}

/// A calendar is a page of days, without a bar of colour above and red days; a line is its edge.
void polishCalendar(QWidget& widget) {
    if (auto* calendar = qobject_cast<QCalendarWidget*>(&widget)) {
        for (const auto day : {Qt::Saturday, Qt::Sunday})
            calendar->setWeekdayTextFormat(day, QTextCharFormat());
    } else if (widget.objectName() == QLatin1String("qt_calendar_navigationbar")) {
        widget.setBackgroundRole(QPalette::Base);
    } else if (widget.inherits("QCalendarPopup")) {
        widget.setBackgroundRole(QPalette::Mid);
        widget.setAutoFillBackground(true);
        widget.setContentsMargins(1, 1, 1, 1);
    }
}

double focusRadius(const QWidget* frame) {
    const auto* ring = qobject_cast<const QFocusFrame*>(frame);
    const QWidget* control = ring == nullptr ? nullptr : ring->widget();
    if (isKind(control, "chip")) return control->height() / 2.0;
    if (isKind(control, "card")) return Metrics::cardRadius;
    return Parts::controlRadius(control);
}

bool pressesButton(const QObject& watched, const QKeyEvent& key) {
    const bool isEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    return isEnter && !key.isAutoRepeat() && qobject_cast<const QAbstractButton*>(&watched) != nullptr;
}

}  // namespace

HouseStyle::HouseStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void HouseStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
        polishButton(*button);
        button->installEventFilter(this);
    }
    if (isField(*widget)) {
        widget->setAttribute(Qt::WA_Hover);
        if (widget->focusPolicy() == Qt::WheelFocus) widget->setFocusPolicy(Qt::StrongFocus);
        widget->installEventFilter(this);
    }
    if (isField(*widget) || qobject_cast<QLineEdit*>(widget) != nullptr) {
        widget->setAttribute(Qt::WA_Hover);
        if (isKind(widget, "small")) widget->setFont(font(TypeRole::labelPlain));
    }
    if (auto* tabs = qobject_cast<QTabBar*>(widget)) {
        tabs->setAttribute(Qt::WA_Hover);
        tabs->setDrawBase(false);
        tabs->setExpanding(false);
        if (isKind(tabs, "segments")) tabs->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        tabs->setFont(font(isKind(tabs, "small") ? TypeRole::label : TypeRole::bodyStrong));
        tabs->installEventFilter(this);
    }
    if (qobject_cast<QHeaderView*>(widget) != nullptr) widget->setFont(font(TypeRole::label));
    const bool isText = qobject_cast<QTextEdit*>(widget) != nullptr || qobject_cast<QPlainTextEdit*>(widget) != nullptr;
    if (isText && !isKind(widget, "plain")) polishText(*static_cast<QAbstractScrollArea*>(widget));
    if (auto* page = qobject_cast<QScrollArea*>(widget)) polishPage(*page);
    polishCalendar(*widget);
    if (isComboFrame(*widget)) setKind(*widget, "menu", true);
    if (isComboList(*widget)) {
        setKind(*widget, "menu", true);
        // That of combos doesn't ask the style for its rows.
        static_cast<QAbstractItemView*>(widget)->setItemDelegate(new QStyledItemDelegate(widget));
    }
}

bool HouseStyle::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && pressesButton(*watched, *static_cast<QKeyEvent*>(event))) {
        static_cast<QAbstractButton*>(watched)->click();
        return true;
    }
    if (auto* tabs = qobject_cast<QTabBar*>(watched); tabs != nullptr && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Home || key == Qt::Key_End) {
            tabs->setCurrentIndex(key == Qt::Key_Home ? 0 : tabs->count() - 1);
            return true;
        }
    }
    if (event->type() == QEvent::Wheel && watched->isWidgetType()) {
        auto* field = static_cast<QWidget*>(watched);
        if (isField(*field) && !field->hasFocus()) {
            event->ignore();  // the page under it scrolls on
            return true;
        }
    }
    return QProxyStyle::eventFilter(watched, event);
}

void HouseStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
    switch (element) {
    case PE_PanelLineEdit: {
        const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
        if (frame != nullptr && frame->lineWidth > 0) Parts::drawField(*option, *painter, widget);
        return;
    }
    case PE_IndicatorCheckBox: return Parts::drawCheckIndicator(*option, *painter, widget);
    case PE_IndicatorRadioButton: return Parts::drawRadioIndicator(*option, *painter);
    case PE_IndicatorItemViewItemCheck: return Parts::drawCheckIndicator(*option, *painter, nullptr);
    case PE_PanelMenu:
    case PE_FrameMenu: return paintPanel(*painter, option->rect, 0, theme().surface, theme().line);
    case PE_PanelTipLabel: return painter->fillRect(option->rect, theme().tip);
    case PE_Frame: return Parts::drawFrame(*option, *painter, widget);
    case PE_FrameGroupBox:
        return paintPanel(*painter, option->rect, Metrics::cardRadius, theme().surface, theme().line);
    case PE_PanelItemViewRow: return;
    case PE_PanelItemViewItem:
        if (const auto* row = qstyleoption_cast<const QStyleOptionViewItem*>(option)) Parts::drawRow(*row, *painter);
        return;
    case PE_FrameFocusRect:  // the ring round the control says it
    case PE_FrameTabBarBase:
    case PE_PanelScrollAreaCorner: return;
    default: QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void HouseStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
    switch (element) {
    case CE_PushButtonBevel: return Parts::drawButtonPanel(*option, *painter, widget);
    case CE_PushButtonLabel:
        return Parts::drawButtonLabel(*qstyleoption_cast<const QStyleOptionButton*>(option), *painter, widget);
    case CE_ComboBoxLabel:
        return Parts::drawComboLabel(*qstyleoption_cast<const QStyleOptionComboBox*>(option), *painter, widget);
    case CE_TabBarTabShape:
        return Parts::drawTabShape(*qstyleoption_cast<const QStyleOptionTab*>(option), *painter, widget);
    case CE_TabBarTabLabel:
        return Parts::drawTabLabel(*qstyleoption_cast<const QStyleOptionTab*>(option), *painter, widget);
    case CE_MenuItem: return Parts::drawMenuItem(*qstyleoption_cast<const QStyleOptionMenuItem*>(option), *painter);
    case CE_MenuEmptyArea: return;
    case CE_CheckBox:
        if (!isKind(widget, "card")) return QProxyStyle::drawControl(element, option, painter, widget);
        return Parts::drawChoiceCard(*qstyleoption_cast<const QStyleOptionButton*>(option), *painter);
    case CE_HeaderEmptyArea: return Parts::drawTableHead(*option, *painter);
    case CE_Header: {
        Parts::drawTableHead(*option, *painter);
        auto words = *qstyleoption_cast<const QStyleOptionHeader*>(option);
        words.rect.adjust(tablePadding, 0, -tablePadding, 0);
        words.palette.setColor(QPalette::ButtonText, theme().text2);
        return QProxyStyle::drawControl(CE_HeaderLabel, &words, painter, widget);
    }
    case CE_ProgressBarGroove:
    case CE_ProgressBarLabel: return;
    case CE_ProgressBarContents:
        return Parts::drawProgress(*qstyleoption_cast<const QStyleOptionProgressBar*>(option), *painter);
    case CE_FocusFrame:
        return paintFocusRing(*painter, QRectF(option->rect).adjusted(4, 4, -4, -4), focusRadius(widget), QColor());
    case CE_ShapedFrame: return Parts::drawFrame(*option, *painter, widget);
    case CE_ItemViewItem: {
        // What is chosen keeps the ink of its ground, not that of chosen letters in a field.
        auto row = *qstyleoption_cast<const QStyleOptionViewItem*>(option);
        const QColor ink = isKind(row.widget, "menu") ? theme().text : theme().accInk;
        row.palette.setColor(QPalette::HighlightedText, ink);
        return QProxyStyle::drawControl(element, &row, painter, widget);
    }
    default: QProxyStyle::drawControl(element, option, painter, widget);
    }
}

void HouseStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                    const QWidget* widget) const {
    switch (control) {
    case CC_ToolButton:
        return Parts::drawToolButton(*qstyleoption_cast<const QStyleOptionToolButton*>(option), *painter, widget);
    case CC_ComboBox:
        return Parts::drawCombo(*qstyleoption_cast<const QStyleOptionComboBox*>(option), *painter, widget);
    case CC_SpinBox:
        return Parts::drawSpinBox(*qstyleoption_cast<const QStyleOptionSpinBox*>(option), *painter, widget);
    case CC_ScrollBar: return Parts::drawScrollBar(*qstyleoption_cast<const QStyleOptionSlider*>(option), *painter);
    default: QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
}

QSize HouseStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                   const QWidget* widget) const {
    switch (type) {
    case CT_PushButton: return Parts::buttonSize(*qstyleoption_cast<const QStyleOptionButton*>(option), widget);
    case CT_ToolButton: return Parts::toolButtonSize(*qstyleoption_cast<const QStyleOptionToolButton*>(option), widget);
    case CT_LineEdit: return Parts::fieldSize(*option, contents, widget);
    case CT_ComboBox: return Parts::fieldSize(*option, contents + QSize(24, 0), widget);
    case CT_SpinBox: return Parts::fieldSize(*option, contents + QSize(14, 0), widget);
    case CT_TabBarTab: return Parts::tabSize(*qstyleoption_cast<const QStyleOptionTab*>(option), widget);
    case CT_MenuItem: return Parts::menuItemSize(*qstyleoption_cast<const QStyleOptionMenuItem*>(option), contents);
    case CT_HeaderSection: {
        const int width = QProxyStyle::sizeFromContents(type, option, contents, widget).width();
        return {width, std::max(tableHeadHeight, option->fontMetrics.height() + 16)};
    }
    case CT_CheckBox:
    case CT_RadioButton:
        if (isKind(widget, "card")) return Parts::choiceCardSize();
        return QProxyStyle::sizeFromContents(type, option, contents, widget).expandedTo(QSize(0, checkHeight));
    case CT_ProgressBar: return {contents.width(), 6};
    case CT_ItemViewItem: {
        const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        return isKind(widget, "menu") ? size.expandedTo(QSize(0, 30)) : size;
    }
    default: return QProxyStyle::sizeFromContents(type, option, contents, widget);
    }
}

QRect HouseStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    switch (element) {
    case SE_LineEditContents: return Parts::fieldContents(*option, widget);
    case SE_ShapedFrameContents:
        if (isKind(widget, "field")) return option->rect.adjusted(textMargin, textMargin, -textMargin, -textMargin);
        if (widget != nullptr && isComboFrame(*widget))
            return option->rect.adjusted(menuMargin, menuMargin, -menuMargin, -menuMargin);
        return QProxyStyle::subElementRect(element, option, widget);
    case SE_PushButtonContents:
    case SE_PushButtonFocusRect:
    case SE_ProgressBarContents:
    case SE_ProgressBarGroove: return option->rect;
    default: return QProxyStyle::subElementRect(element, option, widget);
    }
}

QRect HouseStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                 const QWidget* widget) const {
    if (control == CC_ComboBox) return Parts::comboPart(*option, part, widget);
    if (control == CC_SpinBox)
        return Parts::spinBoxPart(*qstyleoption_cast<const QStyleOptionSpinBox*>(option), part, widget);
    if (control == CC_ScrollBar) {
        const auto& bar = *qstyleoption_cast<const QStyleOptionSlider*>(option);
        return visualRect(option->direction, option->rect, Parts::scrollBarPart(bar, part));
    }
    return QProxyStyle::subControlRect(control, option, part, widget);
}

int HouseStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
    case PM_IndicatorWidth: return Parts::indicatorSize(widget).width();
    case PM_IndicatorHeight: return Parts::indicatorSize(widget).height();
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight: return 16;
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing: return checkGap;
    case PM_HeaderMargin: return tablePadding;
    case PM_ScrollBarExtent: return 10;
    case PM_ScrollView_ScrollBarSpacing: return 0;
    case PM_MenuPanelWidth: return 1;
    case PM_MenuHMargin:
    case PM_MenuVMargin: return menuMargin;
    case PM_SubMenuOverlap: return 0;
    case PM_ToolTipLabelFrameWidth: return 5;
    case PM_FocusFrameHMargin:
    case PM_FocusFrameVMargin: return 4;
    case PM_TabBarTabHSpace:
    case PM_TabBarTabVSpace:
    case PM_TabBarTabShiftVertical:
    case PM_TabBarTabShiftHorizontal:
    case PM_TabBarBaseOverlap:
    case PM_TabBarTabOverlap:
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical: return 0;
    case PM_DefaultFrameWidth:
        if (isKind(widget, "menu")) return 1;
        break;
    case PM_SmallIconSize:
    case PM_ButtonIconSize:
    case PM_ListViewIconSize:
    case PM_TabBarIconSize: return 16;
    default: break;
    }
    return QProxyStyle::pixelMetric(metric, option, widget);
}

int HouseStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* returnData) const {
    switch (hint) {
    case SH_ToolTip_WakeUpDelay: return 500;
    case SH_FocusFrame_AboveWidget: return 1;
    case SH_ComboBox_PopupFrameStyle: return QFrame::StyledPanel;
    case SH_ComboBox_Popup:                      // below the field, not over it
    case SH_ItemView_ActivateItemOnSingleClick:  // a click chooses, on every desktop
    case SH_EtchDisabledText:
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_FocusFrame_Mask: return 0;
    case SH_TabBar_AllowWheelScrolling: return 0;  // as over fields: the page scrolls
    case SH_TabBar_Alignment: return Qt::AlignLeft;
    default: return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

QIcon HouseStyle::standardIcon(StandardPixmap standard, const QStyleOption* option, const QWidget* widget) const {
    if (standard == SP_LineEditClearButton) return icon(QStringLiteral("close-circle"));
    if (standard == SP_ArrowLeft || standard == SP_ArrowRight) {
        // Who asks has thought of the direction already, in which the icon turns by itself.
        const bool isMirrored = QGuiApplication::layoutDirection() == Qt::RightToLeft;
        return icon((standard == SP_ArrowLeft) != isMirrored ? QStringLiteral("left") : QStringLiteral("right"));
    }
    return QProxyStyle::standardIcon(standard, option, widget);
}

}  // namespace quorvane
