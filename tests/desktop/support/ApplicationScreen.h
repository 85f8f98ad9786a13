#pragma once

#include "cli/ProgramRun.h"
#include "desktop/support/AccessibilityService.h"
#include "desktop/support/AccessibleTree.h"
#include "desktop/support/DesktopSession.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "platform/linux/x11/X11Connection.h"
#include "store/ActivityRecord.h"
#include "store/ModelContainer.h"

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>
#include <xcb/xcb.h>

namespace quorvane {

/// The application on a desktop of its own, as a user has it: keys and pointer go in, and what comes out is what a
/// screen reader would read, what the program prints, and the store. There it is about two in the afternoon.
class ApplicationScreen : public testing::Test {
protected:
    ApplicationScreen();

    /// Returns when the window is in front and has the focus somewhere, and `isReady` holds, where it is given.
    void start(const std::function<bool()>& isReady = {});

    /// The application's, beside it.
    [[nodiscard]] ModelContainer openStore() const;
    /// What it holds, oldest first: "Editor 工作", "Quorvane open".
    [[nodiscard]] std::vector<std::string> records() const;

    /// A record of the application, inserted and not saved yet.
    static std::shared_ptr<ActivityRecord> insertRecord(ModelContext& context, const std::string& app, double start,
                                                        double end);

    /// An instant of today, in hours from midnight.
    [[nodiscard]] static Date today(double hour);

    // --- What is shown

    [[nodiscard]] std::vector<AccessibleNode> nodes() { return tree_.nodes(); }
    /// The first with this role that is called so, else the first whose name holds the text.
    [[nodiscard]] std::optional<AccessibleNode> find(const std::string& role, const std::string& name);
    [[nodiscard]] bool comes(const std::string& role, const std::string& name);
    [[nodiscard]] bool goes(const std::string& role, const std::string& name);
    /// Waits for it; throws if it does not come.
    AccessibleNode part(const std::string& role, const std::string& name);
    [[nodiscard]] std::optional<AccessibleNode> focused();
    /// The name of what has the focus.
    [[nodiscard]] std::string focus();
    [[nodiscard]] bool focusComesTo(const std::string& name);
    /// What can have the focus and can't be told apart, or is nothing in particular.
    [[nodiscard]] std::vector<std::string> unnamed();
    /// The names of all that Tab reaches, from where the focus is until it is there again.
    [[nodiscard]] std::vector<std::string> tabRound();
    [[nodiscard]] xcb_window_t window();
    /// 0xRRGGBB on the screen.
    [[nodiscard]] unsigned pixel(const QPoint& at);

    // --- What the user does

    static void xdotool(std::vector<std::string> arguments);
    template <class... Keys>
    static void press(Keys... keys) {
        xdotool({std::string("key"), keys...});
    }
    static void type(const std::string& text) { xdotool({"type", "--delay", "10", text}); }
    void click(const std::string& role, const std::string& name, int times = 1);

    platform::QtRunLoop runLoop_;  // what waits serves it
    DesktopSession session_{{.serverArguments = {"-screen", "0", "1400x1000x24"}}};
    AccessibilityService accessibility_{session_};
    AccessibleTree tree_{accessibility_.address(), "Quorvane"};
    platform::X11Connection x11_{platform::X11Connection::Reader::nobody};
    ProgramSetting setting_;
    int scale_ = 1;  ///< pixels of the screen in one of the tree's
    std::unique_ptr<ProgramRun> application_;
};

}  // namespace quorvane
