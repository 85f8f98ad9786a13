#pragma once

#include <QAbstractButton>
#include <QAccessible>
#include <QLineEdit>
#include <QWidget>
#include <stdexcept>
#include <string>
#include <vector>

namespace quorvane {

/// The program's application without a display, in the light theme, where nothing moves; made once.
void needApplication();

/// A key, pressed and released with the focus where it is.
void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

/// What shows of a role below a widget, as assistive technology meets it, and its names and descriptions.
[[nodiscard]] std::vector<QAccessibleInterface*> accessibleItems(QWidget& root, QAccessible::Role role);
[[nodiscard]] std::vector<std::string> accessibleNames(QWidget& root, QAccessible::Role role);
[[nodiscard]] std::vector<std::string> accessibleDescriptions(QWidget& root, QAccessible::Role role);
/// The names of what a widget paints, which has no widgets of its own.
[[nodiscard]] std::vector<std::string> namesOfParts(QWidget& painted);

/// The button, box, chip or tab that shows and has this name; throws if there is none.
[[nodiscard]] QAbstractButton& buttonCalled(const QWidget& root, const std::string& name);

/// Types into a field, as the keyboard does, in place of what is there.
void type(QLineEdit& field, const char* text);

/// The first widget of a class below another one; classes without `Q_OBJECT` have no name to look for.
template <class Widget>
[[nodiscard]] Widget& widgetBelow(const QWidget& root) {
    for (auto* const child : root.findChildren<QWidget*>())
        if (auto* const found = dynamic_cast<Widget*>(child)) return *found;
    throw std::runtime_error("there is no such widget");
}

}  // namespace quorvane
