#pragma once

#include "shell/support/Offscreen.h"

#include <QWidget>
#include <gmock/gmock.h>

namespace quorvane {

/// A window that is shown and active.
class LookTest : public testing::Test {
protected:
    LookTest();
    /// Lets everything happen that is due, deletions too.
    static void settle();

    QWidget window;
};

}  // namespace quorvane
