#include "platform/linux/X11ForegroundSource.h"

#include "base/Text.h"

#include <QString>
#include <QSysInfo>
#include <algorithm>
#include <cstring>
#include <utility>

namespace quorvane::platform {
namespace {

constexpr Seconds settling = 0.03s;
constexpr Seconds longestSettling = 0.06s;
/// A window may get the focus before its application has said what it is.
constexpr Seconds untilPropertiesAreSet = 0.1s;

std::string textOf(const std::optional<X11Property>& property) {
    return property ? property->bytes.substr(0, property->bytes.find('\0')) : std::string();
}

/// Is it in a property that lists atoms or windows?
bool contains(const std::optional<X11Property>& list, std::uint32_t wanted) {
    for (std::size_t i = 0; list && i + sizeof wanted <= list->bytes.size(); i += sizeof wanted)
        if (std::memcmp(list->bytes.data() + i, &wanted, sizeof wanted) == 0) return true;
    return false;
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

X11ForegroundSource::X11ForegroundSource(RunLoop& runLoop, X11Connection& x11, const ApplicationIdentity& identity,
                                         LinuxSystemEvents& systemEvents)
    : runLoop_(runLoop), x11_(x11), identity_(identity), systemEvents_(systemEvents) {
    if (!x11_.isUsable()) return;
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(x11_.xcb(), x11_.root(), XCB_CW_EVENT_MASK, &mask);
    xcb_flush(x11_.xcb());
    events_ = x11_.observeEvents([this](const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY) return;
        const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (notify.window != x11_.root()) return;
        if (notify.atom == x11_.atom("_NET_ACTIVE_WINDOW") || notify.atom == x11_.atom("_NET_CLIENT_LIST"))
            noteChange();
    });
    // A lock screen does not take the focus in the window manager's eyes. Below it nothing comes to the front, and
    // after it something does.
    locked_ = systemEvents_.observe(SystemEvent::screenLocked, [this] { lastActivated_.reset(); });
    unlocked_ = systemEvents_.observe(SystemEvent::screenUnlocked, [this] { noteChange(); });
    lastActivated_ = frontmostApplication();
}

std::optional<ForegroundApplication> X11ForegroundSource::frontmostApplication() {
    if (systemEvents_.isLocked())
        return ForegroundApplication{.bundleIdentifier = loginWindowBundleId, .localizedName = "LoginWindow"};
    const auto window = frontWindow();
    return window ? std::optional(identity_.identify(window->properties)) : std::nullopt;
}

std::optional<std::string> X11ForegroundSource::frontmostWindowTitle() {
    if (systemEvents_.isLocked()) return std::nullopt;
    const auto window = activeWindow();
    if (window == XCB_WINDOW_NONE) return std::nullopt;
    const auto modern = x11_.askProperty(window, "_NET_WM_NAME");
    const auto old = x11_.askProperty(window, "WM_NAME");
    auto title = text::validUtf8(textOf(x11_.property(modern)));
    const auto oldTitle = x11_.property(old);
    if (title.empty() && oldTitle)
        title =
            oldTitle->type == XCB_ATOM_STRING ? utf8FromLatin1(textOf(oldTitle)) : text::validUtf8(textOf(oldTitle));
    return title.empty() ? std::nullopt : std::optional(std::move(title));
}

Subscription
X11ForegroundSource::observeActivation(std::function<void(const std::optional<ForegroundApplication>&)> activated) {
    return activated_.subscribe(std::move(activated));
}

Subscription X11ForegroundSource::observeVacancy(std::function<void()> vacated) {
    return vacated_.subscribe(std::move(vacated));
}

Channel X11ForegroundSource::channel() const {
    return windowManagerChannel("front window and activation", "X11 _NET_ACTIVE_WINDOW");
}

Channel X11ForegroundSource::titleChannel() const {
    return windowManagerChannel("window titles", "X11 _NET_WM_NAME");
}

// The window manager may start after us, so this is asked each time. The hints of one that has died stay behind on the
// root window; its own window does not.
Channel X11ForegroundSource::windowManagerChannel(std::string question, std::string name) const {
    auto channel = x11_.channel(std::move(question), std::move(name));
    if (!channel.isAvailable) return channel;
    const auto check = x11_.property(x11_.askProperty(x11_.root(), "_NET_SUPPORTING_WM_CHECK"));
    const auto manager = check ? check->firstCardinal() : std::nullopt;
    const auto own =
        manager ? x11_.property(x11_.askProperty(*manager, "_NET_SUPPORTING_WM_CHECK")) : std::optional<X11Property>();
    if (!own || own->firstCardinal() != manager) {
        channel.reason = "no window manager runs that says which window is active (_NET_SUPPORTING_WM_CHECK)";
    } else if (!contains(x11_.property(x11_.askProperty(x11_.root(), "_NET_SUPPORTED")),
                         x11_.atom("_NET_ACTIVE_WINDOW"))) {
        channel.reason = "the window manager does not say which window is active (_NET_ACTIVE_WINDOW)";
    }
    channel.isAvailable = channel.reason.empty() && x11_.isUsable();
    if (!channel.isAvailable) channel.remedy = "Start a window manager that follows EWMH; those of all desktops do.";
    return channel;
}

// When the last window goes or is hidden, some window managers leave its id behind. It is then in their list of windows
// no longer.
xcb_window_t X11ForegroundSource::activeWindow() const {
    if (!x11_.isUsable()) return XCB_WINDOW_NONE;
    const auto askActive = x11_.askProperty(x11_.root(), "_NET_ACTIVE_WINDOW");
    const auto askWindows = x11_.askProperty(x11_.root(), "_NET_CLIENT_LIST");
    const auto active = x11_.property(askActive);
    const auto windows = x11_.property(askWindows);
    const auto window = active ? active->firstCardinal().value_or(XCB_WINDOW_NONE) : xcb_window_t{XCB_WINDOW_NONE};
    if (window == XCB_WINDOW_NONE || contains(windows, window)) return window;
    const auto cookie = xcb_get_window_attributes(x11_.xcb(), window);
    const auto attributes = x11_.reply(xcb_get_window_attributes_reply, cookie);
    const bool isVisible = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    return isVisible ? window : xcb_window_t{XCB_WINDOW_NONE};
}

// All properties are asked for in one go. Some window managers keep the id of a window that is gone, for which the
// server refuses every one of them.
std::optional<X11ForegroundSource::FrontWindow> X11ForegroundSource::frontWindow() {
    FrontWindow window{.id = activeWindow()};
    if (window.id == XCB_WINDOW_NONE) return std::nullopt;
    const auto askClass = x11_.askProperty(window.id, "WM_CLASS");
    const auto askPid = x11_.askProperty(window.id, "_NET_WM_PID");
    const auto askMachine = x11_.askProperty(window.id, "WM_CLIENT_MACHINE");
    const auto askKde = x11_.askProperty(window.id, "_KDE_NET_WM_DESKTOP_FILE");
    const auto askGtk = x11_.askProperty(window.id, "_GTK_APPLICATION_ID");
    const auto wmClass = x11_.property(askClass);
    const auto pid = x11_.property(askPid);
    const auto machine = textOf(x11_.property(askMachine));
    auto& properties = window.properties;
    properties.kdeDesktopFile = text::validUtf8(textOf(x11_.property(askKde)));
    properties.gtkApplicationId = text::validUtf8(textOf(x11_.property(askGtk)));
    if (!wmClass) return std::nullopt;
    properties.instance = text::validUtf8(textOf(wmClass));
    if (const auto end = wmClass->bytes.find('\0'); end != std::string::npos)
        properties.wmClass =
            text::validUtf8(wmClass->bytes.substr(end + 1, wmClass->bytes.find('\0', end + 1) - end - 1));
    if (machine.empty() || machine == QSysInfo::machineHostName().toStdString())
        properties.pid = static_cast<pid_t>(pid ? pid->firstCardinal().value_or(0) : 0);
    return window;
}

void X11ForegroundSource::noteChange() {
    const auto now = runLoop_.now();
    // A clock that was set back must not hold the evaluation up.
    if (!firstChange_ || *firstChange_ > now) firstChange_ = now;
    const auto delay = std::clamp<Seconds>(*firstChange_ + longestSettling - now, 0s, settling);
    evaluation_ = runLoop_.after(delay, [this] { evaluate(true); });
}

void X11ForegroundSource::evaluate(bool mayLookAgain) {
    firstChange_.reset();
    if (systemEvents_.isLocked()) return;
    const auto window = frontWindow();
    if (window && window->properties.areEmpty() && mayLookAgain) {
        evaluation_ = runLoop_.after(untilPropertiesAreSet, [this] { evaluate(false); });
        return;
    }
    const auto application = window ? std::optional(identity_.identify(window->properties)) : std::nullopt;
    if (std::exchange(lastActivated_, application) == application) return;
    if (application)
        activated_.send(application);
    else
        vacated_.send();
}

}  // namespace quorvane::platform
