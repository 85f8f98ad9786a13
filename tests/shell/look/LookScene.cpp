#include "shell/look/LookScene.h"

#include "shell/look/Motion.h"
#include "shell/look/Theme.h"

#include <QApplication>
#include <QKeyEvent>

namespace quorvane {

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

LookTest::LookTest() : window((needApplication(), nullptr)) {
    window.resize(800, 600);
    window.show();
    window.activateWindow();
    settle();
}

void LookTest::settle() {
    for (int round = 0; round < 3; ++round) {
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

}  // namespace quorvane
