#pragma once

#include <QWidget>
#include <gmock/gmock.h>

namespace quorvane {

/// The program's application without a display, in the light theme, where nothing moves; made once.
void needApplication();

/// A key, pressed and released with the focus where it is.
void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

/// A window that is shown and active.
class LookTest : public testing::Test {
protected:
    LookTest();
    /// Lets everything happen that is due, deletions too.
    static void settle();

    QWidget window;
};

}  // namespace quorvane
