#include "platform/linux/x11/X11Windows.h"

#include "base/Text.h"

#include <QString>
#include <QSysInfo>
#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

namespace quorvane::platform::X11Windows {
namespace {

std::string textOf(const std::optional<X11Property>& property) {
    return property ? property->bytes.substr(0, property->bytes.find('\0')) : std::string();
}

std::vector<std::uint32_t> numbersOf(const std::optional<X11Property>& list) {
    std::vector<std::uint32_t> numbers(list ? list->bytes.size() / sizeof(std::uint32_t) : 0);
    if (!numbers.empty()) std::memcpy(numbers.data(), list->bytes.data(), numbers.size() * sizeof numbers[0]);
    return numbers;
}

/// Who has connected to the server and made the window, as the kernel says; 0 if it is nobody on this machine.
pid_t clientProcess(const xcb_res_query_client_ids_reply_t& clients) {
    auto ids = xcb_res_query_client_ids_ids_iterator(&clients);
    for (; ids.rem > 0; xcb_res_client_id_value_next(&ids))
        if (xcb_res_client_id_value_value_length(ids.data) > 0)
            return static_cast<pid_t>(*xcb_res_client_id_value_value(ids.data));
    return 0;
}

std::string utf8FromLatin1(std::string_view latin1) {
    std::string result;
    for (const char c : latin1) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            result += c;
        } else {
            result += static_cast<char>(0xc0 | (byte >> 6));
            result += static_cast<char>(0x80 | (byte & 0x3f));
        }
    }
    return result;
}

}  // namespace

// When the last window goes or is hidden, some window managers leave its id behind. It is then in their list of windows
// no longer.
xcb_window_t active(X11Connection& x11) {
    if (!x11.isUsable()) return XCB_WINDOW_NONE;
    const auto askActive = x11.askProperty(x11.root(), "_NET_ACTIVE_WINDOW");
    const auto askWindows = x11.askProperty(x11.root(), "_NET_CLIENT_LIST");
    const auto active = x11.property(askActive);
    const auto windows = x11.property(askWindows);
    const auto window = active ? active->firstCardinal().value_or(XCB_WINDOW_NONE) : xcb_window_t{XCB_WINDOW_NONE};
    if (window == XCB_WINDOW_NONE || lists(windows, window)) return window;
    const auto cookie = xcb_get_window_attributes(x11.xcb(), window);
    const auto attributes = x11.reply(xcb_get_window_attributes_reply, cookie);
    const bool isVisible = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    return isVisible ? window : xcb_window_t{XCB_WINDOW_NONE};
}

std::vector<xcb_window_t> all(X11Connection& x11) {
    if (!x11.isUsable()) return {};
    return numbersOf(x11.property(x11.askProperty(x11.root(), "_NET_CLIENT_LIST")));
}

Question ask(X11Connection& x11, xcb_window_t window) {
    std::optional<xcb_res_query_client_ids_cookie_t> client;
    const xcb_res_client_id_spec_t wanted{.client = window, .mask = XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    if (x11.extension(&xcb_res_id) != nullptr) client = xcb_res_query_client_ids(x11.xcb(), 1, &wanted);
    return {.client = client,
            .wmClass = x11.askProperty(window, "WM_CLASS"),
            .pid = x11.askProperty(window, "_NET_WM_PID"),
            .machine = x11.askProperty(window, "WM_CLIENT_MACHINE"),
            .kdeDesktopFile = x11.askProperty(window, "_KDE_NET_WM_DESKTOP_FILE"),
            .gtkApplicationId = x11.askProperty(window, "_GTK_APPLICATION_ID")};
}

// Some window managers keep the id of a window that is gone, for which the server refuses every property. What a window
// says of its process is what the program thinks of itself: in a sandbox it counts otherwise than outside. Where the
// server knows who has made the window, that alone counts.
std::optional<WindowProperties> properties(X11Connection& x11, const Question& question) {
    const auto wmClass = x11.property(question.wmClass);
    const auto client = question.client ? x11.reply(xcb_res_query_client_ids_reply, *question.client)
                                        : XcbOwned<xcb_res_query_client_ids_reply_t>();
    const auto pid = x11.property(question.pid);
    const auto machine = textOf(x11.property(question.machine));
    WindowProperties properties;
    properties.kdeDesktopFile = text::validUtf8(textOf(x11.property(question.kdeDesktopFile)));
    properties.gtkApplicationId = text::validUtf8(textOf(x11.property(question.gtkApplicationId)));
    if (!wmClass) return std::nullopt;
    properties.instance = text::validUtf8(textOf(wmClass));
    if (const auto end = wmClass->bytes.find('\0'); end != std::string::npos)
        properties.wmClass =
            text::validUtf8(wmClass->bytes.substr(end + 1, wmClass->bytes.find('\0', end + 1) - end - 1));
    if (!machine.empty() && machine != QSysInfo::machineHostName().toStdString())
        properties.pid = WindowProperties::elsewhere;
    else if (client)
        properties.pid = clientProcess(*client);
    else
        properties.pid = static_cast<pid_t>(pid ? pid->firstCardinal().value_or(0) : 0);
    return properties;
}

std::optional<std::string> title(X11Connection& x11, xcb_window_t window) {
    const auto modern = x11.askProperty(window, "_NET_WM_NAME");
    const auto old = x11.askProperty(window, "WM_NAME");
    auto title = text::validUtf8(textOf(x11.property(modern)));
    const auto oldTitle = x11.property(old);
    if (title.empty() && oldTitle)
        title =
            oldTitle->type == XCB_ATOM_STRING ? utf8FromLatin1(textOf(oldTitle)) : text::validUtf8(textOf(oldTitle));
    return title.empty() ? std::nullopt : std::optional(std::move(title));
}

bool lists(const std::optional<X11Property>& list, std::uint32_t wanted) {
    const auto numbers = numbersOf(list);
    return std::find(numbers.begin(), numbers.end(), wanted) != numbers.end();
}

}  // namespace quorvane::platform::X11Windows
