#pragma once

#include "shell/support/Offscreen.h"

#include <QApplication>
#include <gmock/gmock.h>

namespace quorvane {

/// A window that is shown and active.
class LookTest : public testing::Test {
protected:
    LookTest() : window((needApplication(), nullptr)) {
        window.resize(800, 600);
        window.show();
        window.activateWindow();
        settle();
    }
    /// Lets everything happen that is due, deletions too.
    static void settle() {
        for (int round = 0; round < 3; ++round) {
            QApplication::processEvents();
            QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

    QWidget window;
};

}  // namespace quorvane
