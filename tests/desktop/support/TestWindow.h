#pragma once

#include <optional>
#include <string>
#include <sys/types.h>
#include <xcb/xcb.h>

namespace quorvane {

/// A window of an application that a test makes up, on the server that DISPLAY names.
class TestWindow {
public:
    struct Properties {
        std::string instance;
        std::string wmClass;   ///< empty, like the instance: no WM_CLASS
        std::string title;     ///< UTF-8; empty: none
        std::string oldTitle;  ///< WM_NAME, Latin-1
        std::string gtkApplicationId;
        std::string machine;       ///< on which its program runs
        std::optional<pid_t> pid;  ///< what it says of its process
    };

    /// Shows it; the window manager may or may not give it the focus.
    explicit TestWindow(const Properties& properties);
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;
    ~TestWindow();

    /// Asks the window manager for the focus, as a taskbar does.
    void activate();

    /// Minimises it.
    void iconify();
    void setTitle(const std::string& title) { setText("_NET_WM_NAME", "UTF8_STRING", title); }
    void setClass(const std::string& instance, const std::string& wmClass);

    /// Takes it off the screen, as an application does that lives on in the tray.
    void hide();
    void show();

    /// Takes the pointer for itself, as an open menu does.
    void grabPointer();

    /// The window goes and its application stays.
    void destroy();

    /// Does the window manager say that it has the focus?
    [[nodiscard]] bool hasFocus() const;

private:
    void setText(const char* property, const char* type, const std::string& value);
    void tellWindowManager(const char* message, std::uint32_t data);

    xcb_connection_t* connection_;
    xcb_window_t root_;
    xcb_window_t window_;
};

}  // namespace quorvane
