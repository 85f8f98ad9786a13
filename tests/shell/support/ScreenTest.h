#pragma once

#include "shell/support/Offscreen.h"
#include "support/StoreTest.h"

#include <QApplication>

namespace quorvane {

/// Widgets over a store, without a display and in simulated time.
class ScreenTest : public StoreTest {
protected:
    explicit ScreenTest(std::string_view now = "12:00:00") : StoreTest(now) { needApplication(); }

    /// Lets everything that is due now happen, in the simulation and in Qt, deletions too.
    void settle() {
        constexpr int rounds = 4;  // each side may give the other something to do
        for (int round = 0; round < rounds; ++round) {
            runLoop.runPosted();
            QApplication::processEvents();
            QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

    /// Opens a page or a panel in this size, with the keyboard on it.
    void show(QWidget& widget, QSize size) {
        widget.resize(size);
        widget.show();
        widget.activateWindow();
        settle();
    }

    /// Presses what has the name.
    void click(const QWidget& root, const std::string& name) {
        buttonCalled(root, name).click();
        settle();
    }
};

}  // namespace quorvane
