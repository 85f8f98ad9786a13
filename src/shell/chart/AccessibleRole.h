#pragma once

#include <QAccessible>
#include <QString>

class QWidget;

namespace quorvane {

/// Tells assistive technology what a widget is and what it is called, where Qt can't know it: rows, lists, pictures.
/// Before anything else is said of the widget, as Qt keeps the first answer that it gets.
void setAccessibleRole(QWidget& widget, QAccessible::Role role, const QString& name = {});

}  // namespace quorvane
