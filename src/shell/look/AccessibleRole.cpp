#include "shell/look/AccessibleRole.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace quorvane {
namespace {

constexpr const char* roleProperty = "accessibleRole";

class WidgetWithRole : public QAccessibleWidget {
public:
    using QAccessibleWidget::QAccessibleWidget;
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.modal = role() == QAccessible::Dialog;
        return state;
    }
    // One text, whatever it is made of.
    [[nodiscard]] int childCount() const override {
        return role() == QAccessible::StaticText ? 0 : QAccessibleWidget::childCount();
    }
};

QAccessibleInterface* interfaceWithRole(const QString&, QObject* object) {
    auto* const widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr) return nullptr;
    const QVariant role = widget->property(roleProperty);
    return role.isValid() ? new WidgetWithRole(widget, static_cast<QAccessible::Role>(role.toInt())) : nullptr;
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

void forgetAccessibleRole(QWidget& widget) {
    widget.setProperty(roleProperty, {});
}

void announceDialog(QWidget& dialog, bool isOpening) {
    if (!QAccessible::isActive()) return;
    QAccessibleEvent event(&dialog, isOpening ? QAccessible::DialogStart : QAccessible::DialogEnd);
    QAccessible::updateAccessibility(&event);
}

}  // namespace quorvane
