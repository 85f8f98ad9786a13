#include "shell/look/LookScene.h"

#include <QApplication>

namespace quorvane {

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
