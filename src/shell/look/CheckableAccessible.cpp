#include "shell/look/CheckableAccessible.h"

#include "shell/look/Chip.h"
#include "shell/look/Switch.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QButtonGroup>

namespace quorvane {
namespace {

class Checkable : public QAccessibleWidget {
public:
    explicit Checkable(QAbstractButton& button) : QAccessibleWidget(&button), button_(button) {}

    [[nodiscard]] QAccessible::Role role() const override {
        const QButtonGroup* group = button_.group();
        return group != nullptr && group->exclusive() ? QAccessible::RadioButton : QAccessible::CheckBox;
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        const QString own = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && own.isEmpty() ? button_.text() : own;
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = true;
        state.checked = button_.isChecked();
        return state;
    }
    [[nodiscard]] QStringList actionNames() const override {
        return QStringList{toggleAction(), pressAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& name) override {
        if (name != toggleAction() && name != pressAction()) return QAccessibleWidget::doAction(name);
        if (button_.isEnabled()) button_.click();
    }

private:
    QAbstractButton& button_;
};

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object) {
    if (auto* toggle = dynamic_cast<Switch*>(object)) return new Checkable(*toggle);
    if (auto* choice = dynamic_cast<ChoiceChip*>(object)) return new Checkable(*choice);
    if (auto* chip = dynamic_cast<Chip*>(object)) return new QAccessibleWidget(chip, QAccessible::StaticText);
    return nullptr;
}

}  // namespace

void CheckableAccessible::install() {
    static const bool isInstalled = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
    static_cast<void>(isInstalled);
}

void CheckableAccessible::announceToggles(QAbstractButton& button) {
    QObject::connect(&button, &QAbstractButton::toggled, &button, [&button] {
        QAccessible::State changed;
        changed.checked = true;
        QAccessibleStateChangeEvent event(&button, changed);
        QAccessible::updateAccessibility(&event);
    });
}

}  // namespace quorvane
