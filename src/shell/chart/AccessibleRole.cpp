#include "shell/chart/AccessibleRole.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace quorvane {
namespace {

constexpr const char* roleProperty = "accessibleRole";

QAccessibleInterface* interfaceWithRole(const QString&, QObject* object) {
    auto* const widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr) return nullptr;
    const QVariant role = widget->property(roleProperty);
    return role.isValid() ? new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt())) : nullptr;
}

}  // namespace

void setAccessibleRole(QWidget& widget, QAccessible::Role role, const QString& name) {
    [[maybe_unused]] static const bool isInstalled = [] {
        QAccessible::installFactory(interfaceWithRole);
        return true;
    }();
    widget.setProperty(roleProperty, static_cast<int>(role));
    if (!name.isEmpty()) widget.setAccessibleName(name);
}

}  // namespace quorvane
