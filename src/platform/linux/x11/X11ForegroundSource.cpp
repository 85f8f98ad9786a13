#include "platform/linux/x11/X11ForegroundSource.h"

#include "platform/linux/x11/X11Windows.h"

#include <algorithm>
#include <utility>

namespace quorvane::platform {
namespace {

constexpr const char* whoIsInFront = "front window and activation";
constexpr Seconds settling = 0.03s;
constexpr Seconds longestSettling = 0.06s;
/// A window may get the focus before its application has said what it is.
constexpr Seconds untilPropertiesAreSet = 0.1s;

struct WindowManager {
    xcb_window_t window = XCB_WINDOW_NONE;  ///< its own, which ends with it; none where there is a problem
    std::string problem;
};

// The hints of one that has died stay behind on the root window; its own window does not.
WindowManager windowManager(X11Connection& x11) {
    const auto check = x11.property(x11.askProperty(x11.root(), "_NET_SUPPORTING_WM_CHECK"));
    const xcb_window_t window = check ? check->firstCardinal().value_or(0) : 0;
    // Before the window is asked: whenever it goes from then on, the server tells.
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    if (window != XCB_WINDOW_NONE) xcb_change_window_attributes(x11.xcb(), window, XCB_CW_EVENT_MASK, &mask);
    const auto own = window != XCB_WINDOW_NONE ? x11.property(x11.askProperty(window, "_NET_SUPPORTING_WM_CHECK"))
                                               : std::optional<X11Property>();
    if (!own || own->firstCardinal() != window)
        return {.problem = "no window manager runs that says which window is active (_NET_SUPPORTING_WM_CHECK)"};
    if (!X11Windows::lists(x11.property(x11.askProperty(x11.root(), "_NET_SUPPORTED")), x11.atom("_NET_ACTIVE_WINDOW")))
        return {.problem = "the window manager does not say which window is active (_NET_ACTIVE_WINDOW)"};
    return {.window = window};
}

/// `known` spares the questions where it is a window manager's, and is what they found where it was none's.
Channel windowManagerChannel(X11Connection& x11, xcb_window_t& known, const char* question, const char* name,
                             Sight gives) {
    auto channel = x11.channel(question, name);
    channel.gives = gives;
    if (!channel.isAvailable || known != XCB_WINDOW_NONE) return channel;
    const auto manager = windowManager(x11);
    // A server that ended while it was asked has an obstacle of its own.
    if (!x11.isUsable()) return windowManagerChannel(x11, known, question, name, gives);
    known = manager.window;
    if (known != XCB_WINDOW_NONE) return channel;
    channel.isAvailable = false;
    channel.reason = manager.problem;
    channel.obstacle = Obstacle::noWindowManager;
    channel.remedy = "Start a window manager that follows EWMH; those of all desktops do.";
    return channel;
}

}  // namespace

X11ForegroundSource::X11ForegroundSource(RunLoop& runLoop, X11Connection& x11, const ApplicationIdentity& identity,
                                         SessionEvents& sessionEvents)
    : runLoop_(runLoop), x11_(x11), identity_(identity), sessionEvents_(sessionEvents) {
    if (!x11_.isUsable()) return;
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(x11_.xcb(), x11_.root(), XCB_CW_EVENT_MASK, &mask);
    xcb_flush(x11_.xcb());
    events_ = x11_.observeEvents([this](const xcb_generic_event_t& event) {
        const int kind = event.response_type & 0x7f;
        if (kind == XCB_DESTROY_NOTIFY &&
            reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == windowManager_)
            windowManager_ = XCB_WINDOW_NONE;
        if (kind == XCB_PROPERTY_NOTIFY)
            notePropertyChange(reinterpret_cast<const xcb_property_notify_event_t&>(event));
    });
    // A lock screen does not take the focus in the window manager's eyes. Below it nothing comes to the front, and
    // after it something does.
    reach_ = sessionEvents_.observeReach([this](bool isOutOfReach) {
        if (isOutOfReach)
            lastActivated_.reset();
        else
            noteChange();
    });
    lastActivated_ = frontmostApplication();
}

std::optional<ForegroundApplication> X11ForegroundSource::frontmostApplication() {
    if (sessionEvents_.isOutOfReach())
        return ForegroundApplication{.bundleIdentifier = loginWindowBundleId, .localizedName = "LoginWindow"};
    const auto window = frontWindow();
    return window ? std::optional(identity_.identify(*window)) : std::nullopt;
}

std::optional<std::string> X11ForegroundSource::frontmostWindowTitle() {
    if (sessionEvents_.isOutOfReach()) return std::nullopt;
    const auto window = X11Windows::active(x11_);
    return window != XCB_WINDOW_NONE ? X11Windows::title(x11_, window) : std::nullopt;
}

Subscription
X11ForegroundSource::observeActivation(std::function<void(const std::optional<ForegroundApplication>&)> activated) {
    return activated_.subscribe(std::move(activated));
}

Subscription X11ForegroundSource::observeVacancy(std::function<void()> vacated) {
    return vacated_.subscribe(std::move(vacated));
}

Channel X11ForegroundSource::channel() const {
    return windowManagerChannel(x11_, windowManager_, whoIsInFront, "X11 _NET_ACTIVE_WINDOW", Sight::applications);
}

Channel X11ForegroundSource::channelOf(X11Connection& x11) {
    xcb_window_t unknown = XCB_WINDOW_NONE;
    return windowManagerChannel(x11, unknown, whoIsInFront, "X11 _NET_ACTIVE_WINDOW", Sight::applications);
}

Channel X11ForegroundSource::titleChannel() const {
    return windowManagerChannel(x11_, windowManager_, "window titles", "X11 _NET_WM_NAME", Sight::titles);
}

std::optional<WindowProperties> X11ForegroundSource::frontWindow() {
    const auto window = X11Windows::active(x11_);
    return window != XCB_WINDOW_NONE ? X11Windows::properties(x11_, X11Windows::ask(x11_, window)) : std::nullopt;
}

void X11ForegroundSource::notePropertyChange(const xcb_property_notify_event_t& notify) {
    if (notify.window != x11_.root()) return;
    if (notify.atom == x11_.atom("_NET_SUPPORTING_WM_CHECK") || notify.atom == x11_.atom("_NET_SUPPORTED"))
        windowManager_ = XCB_WINDOW_NONE;
    else if (notify.atom == x11_.atom("_NET_ACTIVE_WINDOW") || notify.atom == x11_.atom("_NET_CLIENT_LIST"))
        noteChange();
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
    if (sessionEvents_.isOutOfReach()) return;
    const auto window = frontWindow();
    if (window && window->areEmpty() && mayLookAgain) {
        evaluation_ = runLoop_.after(untilPropertiesAreSet, [this] { evaluate(false); });
        return;
    }
    const auto application = window ? std::optional(identity_.identify(*window)) : std::nullopt;
    if (std::exchange(lastActivated_, application) == application) return;
    if (application)
        activated_.send(application);
    else
        vacated_.send();
}

}  // namespace quorvane::platform
