#pragma once

#include "platform/linux/desktop/WindowProperties.h"
#include "platform/linux/x11/X11Connection.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>
#include <xcb/res.h>

/// What the window manager says about windows, and what they say about themselves. A connection that is not usable
/// knows no window.
namespace quorvane::platform::X11Windows {

/// The window that has the focus (_NET_ACTIVE_WINDOW); XCB_WINDOW_NONE if none has, or it is gone or hidden.
[[nodiscard]] xcb_window_t active(X11Connection& x11);

/// All windows of applications (_NET_CLIENT_LIST), also hidden ones, up to 4096.
[[nodiscard]] std::vector<xcb_window_t> all(X11Connection& x11);

/// A window's properties on their way. Each question that was asked is to be answered once.
struct Question {
    std::optional<xcb_res_query_client_ids_cookie_t> client;  ///< none if the server can't tell
    xcb_get_property_cookie_t wmClass;
    xcb_get_property_cookie_t pid;
    xcb_get_property_cookie_t machine;
    xcb_get_property_cookie_t kdeDesktopFile;
    xcb_get_property_cookie_t gtkApplicationId;
};

/// Asks for all of them in one go; several windows may be asked before the first answer is waited for.
[[nodiscard]] Question ask(X11Connection& x11, xcb_window_t window);

/// Waits for the answers; none if the window is gone.
[[nodiscard]] std::optional<WindowProperties> properties(X11Connection& x11, const Question& question);

/// None without a title.
[[nodiscard]] std::optional<std::string> title(X11Connection& x11, xcb_window_t window);

/// Is it in a property that lists atoms or windows?
[[nodiscard]] bool lists(const std::optional<X11Property>& list, std::uint32_t wanted);

}  // namespace quorvane::platform::X11Windows
