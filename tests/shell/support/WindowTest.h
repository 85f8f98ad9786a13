#pragma once

#include "shell/support/Offscreen.h"
#include "shell/support/WindowScene.h"
#include "support/Matching.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// The main window, without a display.
class WindowTest : public testing::Test {
protected:
    WindowTest() { needApplication(); }

    void click(const std::string& name) {
        buttonCalled(scene->window(), name).click();
        scene->settle();
    }
    void pressKey(Qt::Key key) {
        press(key);
        scene->settle();
    }
    std::vector<std::string> texts() { return accessibleNames(scene->window(), QAccessible::StaticText); }
    std::vector<std::string> dialogs() { return accessibleNames(scene->window(), QAccessible::Dialog); }

    std::optional<WindowScene> scene;
};

}  // namespace quorvane
