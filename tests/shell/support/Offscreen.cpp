#include "shell/support/Offscreen.h"

#include "shell/look/Motion.h"
#include "shell/look/Theme.h"
#include "support/Mapped.h"

#include <QApplication>
#include <QKeyEvent>

namespace quorvane {
namespace {

std::string nameOf(const QAccessibleInterface* item) {
    return item->text(QAccessible::Name).toStdString();
}

}  // namespace

void needApplication() {
    static QApplication* application = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        static int count = 1;
        static char name[] = "quorvane";
        static char* arguments[] = {name, nullptr};
        return new QApplication(count, arguments);  // lives as long as the program
    }();
    static_cast<void>(application);
    Motion::setAllowed(false);
    applyTheme(Theme::light());
}

void press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, modifiers);
        if (QWidget* focused = QApplication::focusWidget()) QApplication::sendEvent(focused, &event);
    }
}

std::vector<QAccessibleInterface*> accessibleItems(QWidget& root, QAccessible::Role role) {
    std::vector<QAccessibleInterface*> found;
    std::vector<QAccessibleInterface*> open{QAccessible::queryAccessibleInterface(&root)};
    while (!open.empty()) {
        auto* const item = open.back();
        open.pop_back();
        if (item->role() == role && !item->state().invisible) found.push_back(item);
        for (int i = item->childCount() - 1; i >= 0; --i)
            if (auto* const child = item->child(i)) open.push_back(child);
    }
    return found;
}

std::vector<std::string> accessibleNames(QWidget& root, QAccessible::Role role) {
    return mapped(accessibleItems(root, role), &nameOf);
}

std::vector<std::string> accessibleDescriptions(QWidget& root, QAccessible::Role role) {
    return mapped(accessibleItems(root, role),
                  [](const auto* item) { return item->text(QAccessible::Description).toStdString(); });
}

std::vector<std::string> namesOfParts(QWidget& painted) {
    std::vector<std::string> names;
    const auto* const list = QAccessible::queryAccessibleInterface(&painted);
    for (int i = 0; i < list->childCount(); ++i)
        names.push_back(nameOf(list->child(i)));
    return names;
}

QAbstractButton& buttonCalled(const QWidget& root, const std::string& name) {
    for (auto* const button : root.findChildren<QAbstractButton*>()) {
        const auto* const item = QAccessible::queryAccessibleInterface(button);
        if (button->isVisible() && (nameOf(item) == name || button->text().toStdString() == name)) return *button;
    }
    throw std::runtime_error("nothing to press is called " + name);
}

void type(QLineEdit& field, const char* text) {
    field.setText(QString::fromUtf8(text));
    Q_EMIT field.textEdited(field.text());
}

}  // namespace quorvane
