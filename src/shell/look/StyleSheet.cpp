#include "shell/look/StyleSheet.h"

#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QColor>
#include <QGuiApplication>
#include <utility>

namespace quorvane {
namespace {

QString cssColor(const QColor& color) {
    return QStringLiteral("rgba(%1,%2,%3,%4)").arg(color.red()).arg(color.green()).arg(color.blue()).arg(color.alpha());
}

/// Style sheets load pictures by name alone, so these icons are in the program once for each ink.
QString inkedIcon(const char* name, const QColor& ink) {
    return QStringLiteral("url(:/inked/%1-%2.svg)").arg(QLatin1String(name), ink.name().mid(1).toUpper());
}

constexpr const char* fields = R"(
QLineEdit, QComboBox, QAbstractSpinBox { background: @field; color: @text; border: 1px solid @control; border-radius: 8px;
    padding: 0 8px; min-height: 30px; selection-background-color: @accFill; selection-color: @onFill; }
QPlainTextEdit, QTextEdit { background: @field; color: @text; border: 1px solid @control; border-radius: 8px; padding: 6px;
    selection-background-color: @accFill; selection-color: @onFill; }
QLineEdit:focus, QComboBox:focus, QAbstractSpinBox:focus, QPlainTextEdit:focus, QTextEdit:focus { border-color: @accent; }
QLineEdit:disabled, QComboBox:disabled, QAbstractSpinBox:disabled, QPlainTextEdit:disabled {
    background: @sunken; color: @faint; border-color: @line; }
QLineEdit[error="true"] { border: 2px solid @bad; padding: 0 7px; min-height: 28px; }
QAbstractSpinBox[error="true"] { border: 2px solid @bad; min-height: 28px; }
QLineEdit[small="true"], QComboBox[small="true"], QAbstractSpinBox[small="true"] { min-height: 26px; border-radius: 7px;
    padding: 0 6px; font-size: @labelSize; }
QLineEdit[quiet="true"], QComboBox[quiet="true"], QAbstractSpinBox[quiet="true"] { background: @surface; border-color: @line; }
QLineEdit[quiet="true"]:hover, QComboBox[quiet="true"]:hover, QAbstractSpinBox[quiet="true"]:hover { border-color: @control; }
QLineEdit[quiet="true"]:focus, QComboBox[quiet="true"]:focus, QAbstractSpinBox[quiet="true"]:focus { border-color: @control; }
QComboBox QLineEdit, QAbstractSpinBox QLineEdit { border: 0; padding: 0; min-height: 0; background: transparent; }
QComboBox { padding-@start: 10px; padding-@end: 28px; }
QComboBox[small="true"] { padding-@start: 8px; padding-@end: 24px; }
QComboBox::drop-down { subcontrol-origin: border; subcontrol-position: center right; width: 28px; border: 0; }
QComboBox::down-arrow { image: @iconDown; width: 16px; height: 16px; }
QComboBox QAbstractItemView { background: @surface; color: @text; border: 1px solid @line; padding: 5px; outline: 0; }
QComboBox QAbstractItemView::item { min-height: 30px; padding: 0 8px; border-radius: 6px; }
QComboBox QAbstractItemView::item:selected, QComboBox QAbstractItemView::item:hover { background: @hover; color: @text; }
QAbstractSpinBox { padding-@end: 24px; }
QAbstractSpinBox::up-button, QAbstractSpinBox::down-button { subcontrol-origin: border; width: 22px; border: 0;
    border-radius: 5px; margin: 2px; background: transparent; }
QAbstractSpinBox::up-button { subcontrol-position: top right; margin-bottom: 0; }
QAbstractSpinBox::down-button { subcontrol-position: bottom right; margin-top: 0; }
QAbstractSpinBox::up-button:hover, QAbstractSpinBox::down-button:hover { background: @hover; }
QAbstractSpinBox::up-arrow { image: @iconUp; width: 12px; height: 12px; }
QAbstractSpinBox::down-arrow { image: @iconDown; width: 12px; height: 12px; }
QDateTimeEdit::drop-down { subcontrol-origin: border; subcontrol-position: center right; width: 28px; border: 0; }
QDateTimeEdit::down-arrow { image: @iconDown; width: 16px; height: 16px; }
)";

constexpr const char* controls = R"(
QCheckBox { spacing: 8px; color: @text; min-height: 24px; }
QCheckBox:disabled { color: @faint; }
QCheckBox::indicator { width: 16px; height: 16px; border: 1px solid @control; border-radius: 5px; background: @field; }
QCheckBox::indicator:hover { border-color: @accent; }
QCheckBox::indicator:checked { background: @accFill; border-color: @accFill; image: @iconCheck; }
QCheckBox::indicator:disabled { background: @sunken; border-color: @line; }
QCheckBox::indicator:checked:disabled { background: @control; border-color: @control; }
QMenu { background: @surface; color: @text; border: 1px solid @line; padding: 5px; }
QMenu::item { min-height: 20px; padding: 5px 10px; padding-@end: 28px; border-radius: 6px; }
QMenu::item:selected { background: @hover; }
QMenu::item:disabled { color: @text3; }
QMenu::icon { padding-@start: 10px; }
QMenu::separator { height: 1px; background: @line2; margin: 5px 4px; }
QMenu::right-arrow { image: @iconRight; width: 14px; height: 14px; margin-@end: 6px; }
QMenu::indicator { width: 16px; height: 16px; margin-@start: 6px; }
QMenu::indicator:checked { image: @iconTick; }
QToolTip { background: @tip; color: @tipText; border: 1px solid @tip; padding: 5px 7px; font-size: @labelSize; }
QScrollArea, QScrollArea > QWidget > QWidget#scrolled { background: transparent; border: 0; }
QScrollBar { background: transparent; border: 0; margin: 0; }
QScrollBar:vertical { width: 10px; }
QScrollBar:horizontal { height: 10px; }
QScrollBar::handle { background: @thumb; border-radius: 3px; }
QScrollBar::handle:vertical { min-height: 28px; margin: 2px; }
QScrollBar::handle:horizontal { min-width: 28px; margin: 2px; }
QScrollBar::handle:vertical:hover, QScrollBar::handle:vertical:pressed { margin: 2px 0; border-radius: 5px; }
QScrollBar::handle:horizontal:hover, QScrollBar::handle:horizontal:pressed { margin: 0 2px; border-radius: 5px; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
)";

}  // namespace

QString styleSheet(const Theme& theme) {
    QString sheet = QString::fromLatin1(fields) + QString::fromLatin1(controls);
    const bool isMirrored = QGuiApplication::layoutDirection() == Qt::RightToLeft;
    // A name that begins with another one stands before it.
    const std::pair<const char*, QString> values[] = {
        {"@field", cssColor(theme.isDark ? theme.sunken : theme.surface)},
        {"@faint", cssColor(withOpacity(theme.text3, 0.75))},
        {"@tipText", cssColor(theme.tipText)},
        {"@tip", cssColor(theme.tip)},
        {"@thumb", cssColor(withOpacity(theme.grey, theme.isHighContrast ? 1 : 0.45))},
        {"@text3", cssColor(theme.text3)},
        {"@text", cssColor(theme.text)},
        {"@control", cssColor(theme.control)},
        {"@surface", cssColor(theme.surface)},
        {"@sunken", cssColor(theme.sunken)},
        {"@hover", cssColor(theme.hover)},
        {"@line2", cssColor(theme.line2)},
        {"@line", cssColor(theme.line)},
        {"@accFill", cssColor(theme.accFill)},
        {"@accent", cssColor(theme.accent)},
        {"@onFill", cssColor(theme.onFill)},
        {"@bad", cssColor(theme.bad)},
        {"@labelSize", QStringLiteral("%1px").arg(font(TypeRole::labelPlain).pixelSize())},
        // Positions are mirrored by Qt, paddings are not.
        {"@start", isMirrored ? QStringLiteral("right") : QStringLiteral("left")},
        {"@end", isMirrored ? QStringLiteral("left") : QStringLiteral("right")},
        {"@iconDown", inkedIcon("down", theme.text2)},
        {"@iconUp", inkedIcon("up", theme.text2)},
        {"@iconRight", inkedIcon(isMirrored ? "left" : "right", theme.text2)},
        {"@iconTick", inkedIcon("check", theme.text2)},
        {"@iconCheck", inkedIcon("check", theme.onFill)},
    };
    for (const auto& [name, value] : values)
        sheet.replace(QLatin1String(name), value);
    return sheet;
}

}  // namespace quorvane
