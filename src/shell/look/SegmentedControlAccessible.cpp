#include "shell/look/SegmentedControlAccessible.h"

#include "shell/look/SegmentedControl.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <vector>

namespace quorvane {
namespace {

class Segment : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    Segment(SegmentedControl& control, int index) : control_(control), index_(index) {}

    [[nodiscard]] bool isValid() const override { return true; }  // its parent goes with the control
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(&control_);
    }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? control_.texts()[index_] : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}
    [[nodiscard]] QRect rect() const override {
        const QRect place = control_.segment(index_);
        return {control_.mapToGlobal(place.topLeft()), place.size()};
    }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::RadioButton; }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        state.checkable = true;
        state.checked = control_.current() == index_;
        state.focusable = true;
        state.focused = state.checked && control_.hasFocus();
        state.disabled = !control_.isEnabled();
        state.invisible = !control_.isVisible();
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }
    [[nodiscard]] QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& name) override {
        if (name == pressAction() && control_.isEnabled()) control_.choose(index_);
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    SegmentedControl& control_;
    int index_;
};

class SegmentList : public QAccessibleWidget {
public:
    explicit SegmentList(SegmentedControl& control)
        : QAccessibleWidget(&control, QAccessible::List), control_(control) {
        const auto count = static_cast<std::size_t>(control.texts().size());
        segments_.reserve(count);
        for (std::size_t index = 0; index < count; ++index) {
            segments_.push_back(
                QAccessible::registerAccessibleInterface(new Segment(control, static_cast<int>(index))));
        }
    }
    SegmentList(const SegmentList&) = delete;
    SegmentList& operator=(const SegmentList&) = delete;
    ~SegmentList() override {
        for (const QAccessible::Id id : segments_)
            QAccessible::deleteAccessibleInterface(id);
    }

    [[nodiscard]] int childCount() const override { return static_cast<int>(segments_.size()); }
    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount()) return nullptr;
        return QAccessible::accessibleInterface(segments_[static_cast<std::size_t>(index)]);
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* wanted) const override {
        for (int index = 0; index < childCount(); ++index) {
            if (child(index) == wanted) return index;
        }
        return -1;
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        for (int index = 0; index < childCount(); ++index) {
            if (child(index)->rect().contains(x, y)) return child(index);
        }
        return nullptr;
    }
    [[nodiscard]] QAccessibleInterface* focusChild() const override {
        return control_.hasFocus() ? child(control_.current()) : nullptr;
    }

private:
    SegmentedControl& control_;
    std::vector<QAccessible::Id> segments_;
};

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object) {
    auto* control = dynamic_cast<SegmentedControl*>(object);
    return control == nullptr ? nullptr : new SegmentList(*control);
}

}  // namespace

void SegmentedControlAccessible::install() {
    static const bool isInstalled = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
    static_cast<void>(isInstalled);
}

void SegmentedControlAccessible::announceCurrent(SegmentedControl& control) {
    if (!QAccessible::isActive()) return;
    QAccessibleEvent event(&control, control.hasFocus() ? QAccessible::Focus : QAccessible::StateChanged);
    event.setChild(control.current());
    QAccessible::updateAccessibility(&event);
}

}  // namespace quorvane
