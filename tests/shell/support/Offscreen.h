#pragma once

#include <QAccessible>
#include <QWidget>
#include <stdexcept>
#include <string>
#include <vector>

namespace quorvane {

/// The program's application without a display, in the light theme, where nothing moves; made once.
void needApplication();

/// A key, pressed and released with the focus where it is.
void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

/// What shows of a role below a widget, as assistive technology meets it, and its names.
[[nodiscard]] std::vector<QAccessibleInterface*> accessibleItems(QWidget& root, QAccessible::Role role);
[[nodiscard]] std::vector<std::string> accessibleNames(QWidget& root, QAccessible::Role role);

/// The first widget of a class below another one; classes without `Q_OBJECT` have no name to look for.
template <class Widget>
[[nodiscard]] Widget& widgetBelow(const QWidget& root) {
    for (auto* const child : root.findChildren<QWidget*>())
        if (auto* const found = dynamic_cast<Widget*>(child)) return *found;
    throw std::runtime_error("there is no such widget");
}

}  // namespace quorvane
