#include "capture/AccessibilityWindowHelper.h"

#include "platform/simulated/SimulatedAccessibility.h"
#include "support/Matching.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

namespace Name = platform::AccessibleName;
using AccessibilityWindowHelper::focusedWindow;
using platform::AccessibleElement;

class AccessibilityWindowHelperTest : public testing::Test {
protected:
    AccessibilityWindowHelperTest() { accessibility.setApplication(7, "application"); }

    /// What has the focus lies so many levels below a window.
    void focusBelowWindow(int levels) {
        accessibility.setElement("application", Name::focusedElement, "level 0");
        for (int i = 0; i < levels; ++i)
            accessibility.setElement(fmt::format("level {}", i), Name::parent, fmt::format("level {}", i + 1));
        accessibility.setText(fmt::format("level {}", levels), Name::role, "AXWindow");
    }

    platform::SimulatedAccessibility accessibility;
};

TEST_F(AccessibilityWindowHelperTest, TakesTheFocusedThenTheMainThenTheFirstThenTheSurroundingWindow) {
    focusBelowWindow(1);
    EXPECT_EQ(focusedWindow(accessibility, 7), AccessibleElement{"level 1"});
    EXPECT_THAT(accessibility.asked(),
                ElementsAre("application AXFocusedWindow", "application AXMainWindow", "application AXWindows",
                            "application AXFocusedUIElement", "level 0 AXRole", "level 0 AXParent", "level 1 AXRole"));
    accessibility.setElements("application", Name::windows, {"first", "second"});
    EXPECT_EQ(focusedWindow(accessibility, 7), AccessibleElement{"first"});
    accessibility.setElement("application", Name::mainWindow, "main");
    EXPECT_EQ(focusedWindow(accessibility, 7), AccessibleElement{"main"});
    accessibility.setElement("application", Name::focusedWindow, "focused");
    EXPECT_EQ(focusedWindow(accessibility, 7), AccessibleElement{"focused"});
    EXPECT_EQ(accessibility.asked().size(), 7 + 3 + 2 + 1);
}

TEST_F(AccessibilityWindowHelperTest, AnswersOfAnotherKindCountAsMissing) {
    accessibility.setText("application", Name::focusedWindow, "window");
    accessibility.setElement("application", Name::windows, "window");
    accessibility.setElements("application", Name::mainWindow, {"window"});
    EXPECT_EQ(focusedWindow(accessibility, 7), std::nullopt);
    accessibility.setElements("application", Name::windows, {});
    focusBelowWindow(0);
    EXPECT_EQ(focusedWindow(accessibility, 7), AccessibleElement{"level 0"});
    EXPECT_EQ(focusedWindow(accessibility, 8), std::nullopt);
}

TEST_F(AccessibilityWindowHelperTest, GivesUpAfterEightStepsUpward) {
    focusBelowWindow(8);
    EXPECT_EQ(focusedWindow(accessibility, 7), AccessibleElement{"level 8"});
    accessibility.setText("level 8", Name::role, "AXGroup");
    EXPECT_EQ(focusedWindow(accessibility, 7), std::nullopt);  // no parent
    focusBelowWindow(9);
    const auto before = accessibility.asked().size();
    EXPECT_EQ(focusedWindow(accessibility, 7), std::nullopt);
    EXPECT_EQ(accessibility.asked().size() - before, 21);
    EXPECT_EQ(accessibility.asked().back(), "level 8 AXRole");
}

}  // namespace
}  // namespace quorvane
