#pragma once

#include <QColor>
#include <QRect>
#include <QSize>
#include <QStyleOption>

class QIcon;
class QPainter;

namespace quorvane {

/// What `HouseStyle` draws, by the family of controls. Sizes are whole controls; `widget` may be null.
namespace HouseStyleParts {

/// Text that can't be used now.
[[nodiscard]] QColor faint();
/// An icon of the set in this ink, any other one as it is.
void drawControlIcon(QPainter& painter, const QRect& place, const QIcon& icon, const QColor& ink, int size,
                     const QStyleOption& option);
[[nodiscard]] bool isHovered(const QStyleOption& option);
/// The least height of a control by its kind: 28, 32 or 36, more where the letters are larger.
[[nodiscard]] int controlHeight(const QStyleOption& option, const QWidget* widget);
[[nodiscard]] int controlRadius(const QWidget* widget);

// Buttons (ButtonStyle.cpp).
void drawButtonPanel(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawButtonLabel(const QStyleOptionButton& option, QPainter& painter, const QWidget* widget);
void drawToolButton(const QStyleOptionToolButton& option, QPainter& painter, const QWidget* widget);
[[nodiscard]] QSize buttonSize(const QStyleOptionButton& option, const QWidget* widget);
[[nodiscard]] QSize toolButtonSize(const QStyleOptionToolButton& option, const QWidget* widget);

// Fields, combos and spin boxes (FieldStyle.cpp).
void drawField(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawCombo(const QStyleOptionComboBox& option, QPainter& painter, const QWidget* widget);
void drawComboLabel(const QStyleOptionComboBox& option, QPainter& painter, const QWidget* widget);
void drawSpinBox(const QStyleOptionSpinBox& option, QPainter& painter, const QWidget* widget);
[[nodiscard]] QSize fieldSize(const QStyleOption& option, const QSize& contents, const QWidget* widget);
[[nodiscard]] QRect fieldContents(const QStyleOption& option, const QWidget* widget);
[[nodiscard]] QRect comboPart(const QStyleOption& option, QStyle::SubControl part, const QWidget* widget);
[[nodiscard]] QRect spinBoxPart(const QStyleOptionSpinBox& option, QStyle::SubControl part, const QWidget* widget);

// Check boxes, switches and tabs (ChoiceStyle.cpp).
[[nodiscard]] QSize indicatorSize(const QWidget* widget);
/// A check box of the kind `card`.
void drawChoiceCard(const QStyleOptionButton& option, QPainter& painter);
[[nodiscard]] QSize choiceCardSize();
void drawCheckIndicator(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawRadioIndicator(const QStyleOption& option, QPainter& painter);
void drawTabShape(const QStyleOptionTab& option, QPainter& painter, const QWidget* widget);
void drawTabLabel(const QStyleOptionTab& option, QPainter& painter, const QWidget* widget);
[[nodiscard]] QSize tabSize(const QStyleOptionTab& option, const QWidget* widget);

// Menus, scroll bars and progress (MenuStyle.cpp).
void drawMenuItem(const QStyleOptionMenuItem& option, QPainter& painter);
[[nodiscard]] QSize menuItemSize(const QStyleOptionMenuItem& option, const QSize& contents);
void drawScrollBar(const QStyleOptionSlider& option, QPainter& painter);
[[nodiscard]] QRect scrollBarPart(const QStyleOptionSlider& option, QStyle::SubControl part);
void drawProgress(const QStyleOptionProgressBar& option, QPainter& painter);

// What things lie on (FrameStyle.cpp).
void drawFrame(const QStyleOption& option, QPainter& painter, const QWidget* widget);
void drawRow(const QStyleOptionViewItem& option, QPainter& painter);
void drawTableHead(const QStyleOption& option, QPainter& painter);

}  // namespace HouseStyleParts

}  // namespace quorvane
