#pragma once

#include <QAccessible>
#include <QString>

class QWidget;

namespace quorvane {

/// Tells assistive technology what a widget is and what it is called, where Qt can't know it: rows, lists, pictures.
/// Before anything else is said of the widget, as Qt keeps the first answer that it gets.
/// What is a dialog is modal; what is a static text has no parts.
void setAccessibleRole(QWidget& widget, QAccessible::Role role, const QString& name = {});

/// For a widget whose class says a role that isn't this one's: it has an interface of its own.
void forgetAccessibleRole(QWidget& widget);

/// The dialog has opened, or is closing.
void announceDialog(QWidget& dialog, bool isOpening);

}  // namespace quorvane
