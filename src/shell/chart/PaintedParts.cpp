#include "shell/chart/PaintedParts.h"

#include <QPointer>
#include <QWidget>
#include <QtWidgets/qaccessiblewidget.h>
#include <vector>

namespace quorvane {
namespace {

/// One part. It asks the widget each time and becomes invalid when there are fewer parts than its number says.
class PartInterface final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    PartInterface(QWidget* widget, PaintedParts* parts, int part) : widget_(widget), parts_(parts), part_(part) {}

    [[nodiscard]] bool isValid() const override { return !widget_.isNull() && part_ < parts_->partCount(); }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QWindow* window() const override {
        return widget_.isNull() ? nullptr : widget_->window()->windowHandle();
    }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(widget_.data());
    }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QAccessible::Role role() const override { return parts_->partRole(); }
    void setText(QAccessible::Text, const QString&) override {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name && isValid() ? parts_->partName(part_) : QString();
    }

    [[nodiscard]] QRect rect() const override {
        if (!isValid()) return {};
        const QRect inWidget = parts_->partRectangle(part_);
        return {widget_->mapToGlobal(inWidget.topLeft()), inWidget.size()};
    }

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        state.invisible = !widget_->isVisible();
        state.offscreen = !widget_->visibleRegion().intersects(parts_->partRectangle(part_));
        state.focusable = isButton();
        state.focused = widget_->hasFocus() && parts_->focusedPart() == part_;
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type != QAccessible::ActionInterface || !isButton()) return nullptr;
        return static_cast<QAccessibleActionInterface*>(this);
    }

    [[nodiscard]] QStringList actionNames() const override { return {pressAction()}; }
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }
    void doAction(const QString& name) override {
        if (isValid() && name == pressAction()) parts_->pressPart(part_);
    }

private:
    [[nodiscard]] bool isButton() const { return parts_->partRole() == QAccessible::Button; }

    QPointer<QWidget> widget_;
    PaintedParts* parts_;
    int part_;
};

/// The widget as the list of its parts.
class PartsInterface final : public QAccessibleWidget {
public:
    PartsInterface(QWidget* widget, PaintedParts* parts)
        : QAccessibleWidget(widget, QAccessible::List), parts_(parts) {}
    ~PartsInterface() override {
        for (const QAccessible::Id id : children_)
            QAccessible::deleteAccessibleInterface(id);
    }

    [[nodiscard]] int childCount() const override { return isValid() ? parts_->partCount() : 0; }

    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount()) return nullptr;
        while (children_.size() <= static_cast<std::size_t>(index)) {
            const int next = static_cast<int>(children_.size());
            children_.push_back(QAccessible::registerAccessibleInterface(new PartInterface(widget(), parts_, next)));
        }
        return QAccessible::accessibleInterface(children_[static_cast<std::size_t>(index)]);
    }

    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        for (int i = 0; i < childCount(); ++i)
            if (this->child(i) == child) return i;
        return -1;
    }

    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        const QPoint point = widget()->mapFromGlobal(QPoint(x, y));
        for (int i = 0; i < childCount(); ++i)
            if (parts_->partRectangle(i).contains(point)) return child(i);
        return nullptr;
    }

    [[nodiscard]] QAccessibleInterface* focusChild() const override {
        return widget()->hasFocus() ? child(parts_->focusedPart()) : nullptr;
    }

private:
    PaintedParts* parts_;
    mutable std::vector<QAccessible::Id> children_;  ///< made when they are first asked for
};

QAccessibleInterface* interfaceOf(const QString&, QObject* object) {
    auto* const parts = dynamic_cast<PaintedParts*>(object);
    return parts == nullptr ? nullptr : new PartsInterface(static_cast<QWidget*>(object), parts);
}

}  // namespace

PaintedParts::PaintedParts() {
    static const bool isInstalled = (QAccessible::installFactory(interfaceOf), true);
    Q_UNUSED(isInstalled)
}

}  // namespace quorvane
