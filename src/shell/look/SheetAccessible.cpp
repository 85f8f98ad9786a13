#include "shell/look/SheetAccessible.h"

#include "shell/look/Sheet.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace quorvane {
namespace {

class Dialog : public QAccessibleWidget {
public:
    explicit Dialog(Sheet& sheet) : QAccessibleWidget(&sheet, QAccessible::Dialog) {}
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.modal = true;
        return state;
    }
};

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object) {
    auto* sheet = dynamic_cast<Sheet*>(object);
    return sheet == nullptr ? nullptr : new Dialog(*sheet);
}

}  // namespace

void SheetAccessible::install() {
    static const bool isInstalled = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
    static_cast<void>(isInstalled);
}

void SheetAccessible::announce(Sheet& sheet, bool isOpening) {
    if (!QAccessible::isActive()) return;
    QAccessibleEvent event(&sheet, isOpening ? QAccessible::DialogStart : QAccessible::DialogEnd);
    QAccessible::updateAccessibility(&event);
}

}  // namespace quorvane
