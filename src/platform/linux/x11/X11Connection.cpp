#include "platform/linux/x11/X11Connection.h"

#include <QSocketNotifier>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <xcb/xcbext.h>

namespace quorvane::platform {

std::optional<std::uint32_t> X11Property::firstCardinal() const {
    std::uint32_t value = 0;
    if (bytes.size() < sizeof value) return std::nullopt;
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
}

X11Connection::X11Connection(Reader reader) {
    const char* display = std::getenv("DISPLAY");
    if (!display || !*display) {
        refusal_ = {.name = "X11",
                    .reason = "no display: DISPLAY is not set, and no Wayland compositor answers",
                    .remedy = "Start it from a terminal inside the desktop session.",
                    .obstacle = Obstacle::noDisplay};
        return;
    }
    displayName_ = display;
    int screen = 0;
    connection_ = xcb_connect(display, &screen);
    if (xcb_connection_has_error(connection_)) {
        refusal_ = {.name = "X11",
                    .reason = "cannot connect to the X server at DISPLAY=" + displayName_,
                    .remedy = "Check that the server runs and that XAUTHORITY names its cookie file.",
                    .obstacle = Obstacle::displayRefused};
        return;
    }
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    for (; screen > 0 && screens.rem > 1; --screen)
        xcb_screen_next(&screens);
    root_ = screens.data->root;
    if (reader == Reader::nobody) return;
    notifier_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection_), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { dispatch(); });
}

X11Connection::X11Connection(Channel refusal) : refusal_(std::move(refusal)) {}

X11Connection::~X11Connection() {
    notifier_.reset();
    if (connection_) xcb_disconnect(connection_);
}

bool X11Connection::isUsable() const {
    return connection_ && !xcb_connection_has_error(connection_);
}

xcb_atom_t X11Connection::atom(std::string_view name) {
    if (const auto known = atoms_.find(name); known != atoms_.end()) return known->second;
    if (!isUsable()) return XCB_ATOM_NONE;
    const auto cookie = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const auto answer = reply(xcb_intern_atom_reply, cookie);
    return answer ? atoms_.emplace(name, answer->atom).first->second : xcb_atom_t{XCB_ATOM_NONE};
}

bool X11Connection::succeeded(xcb_void_cookie_t cookie) {
    const XcbOwned<xcb_generic_error_t> error(xcb_request_check(connection_, cookie));
    collectEvents();
    return !error && isUsable();
}

xcb_get_property_cookie_t X11Connection::askProperty(xcb_window_t window, std::string_view name) {
    constexpr std::uint32_t limitInWords = 4096;
    return xcb_get_property(connection_, 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, limitInWords);
}

std::optional<X11Property> X11Connection::property(xcb_get_property_cookie_t cookie) {
    const auto answer = reply(xcb_get_property_reply, cookie);
    if (!answer) return std::nullopt;
    const auto* bytes = static_cast<const char*>(xcb_get_property_value(answer.get()));
    return X11Property{.type = answer->type,
                       .bytes = {bytes, static_cast<std::size_t>(xcb_get_property_value_length(answer.get()))}};
}

const xcb_query_extension_reply_t* X11Connection::extension(xcb_extension_t* extension) {
    if (!isUsable()) return nullptr;
    const auto* data = xcb_get_extension_data(connection_, extension);
    collectEvents();
    return data && data->present ? data : nullptr;
}

Channel X11Connection::channel(std::string question, std::string name) const {
    Channel channel{.question = std::move(question), .name = std::move(name), .isAvailable = isUsable()};
    if (channel.isAvailable) return channel;
    if (!refusal_.reason.empty()) {
        channel.name = refusal_.name;
        channel.reason = refusal_.reason;
        channel.remedy = refusal_.remedy;
        channel.obstacle = refusal_.obstacle;
    } else {
        channel.reason = "the X server at DISPLAY=" + displayName_ + " has gone away";
        channel.remedy = "Start Quorvane again in the new session.";
        channel.obstacle = Obstacle::displayGone;
    }
    return channel;
}

Channel X11Connection::extensionChannel(std::string question, const std::string& extension, bool isOffered) const {
    auto channel = this->channel(std::move(question), "X11 " + extension);
    if (channel.isAvailable && !isOffered) {
        channel.isAvailable = false;
        channel.reason = "the X server does not offer the extension " + extension;
        channel.remedy = "Enable it in the X server; an untrusted connection (ssh -X) is not given it.";
    }
    return channel;
}

void* X11Connection::replyInTime(unsigned sequence) {
    if (xcb_flush(connection_) <= 0) return nullptr;
    for (;;) {
        void* answer = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(connection_, sequence, &answer, &error) != 0) {
            std::free(error);
            return answer;
        }
        const int left = deadline_->millisecondsLeft();
        pollfd waiting{.fd = xcb_get_file_descriptor(connection_), .events = POLLIN, .revents = 0};
        const int ready = left > 0 ? poll(&waiting, 1, left) : 0;
        if (ready > 0 || (ready < 0 && errno == EINTR)) continue;
        xcb_discard_reply(connection_, sequence);
        return nullptr;
    }
}

// While it waits for a reply xcb may read events too. The socket says nothing about those any more, so they are taken
// here and passed on in the loop's next turn.
void X11Connection::collectEvents() {
    while (auto* event = xcb_poll_for_queued_event(connection_))
        collected_.emplace_back(event);
    if (!notifier_) collected_.clear();
    if ((collected_.empty() && isUsable()) || isDispatchPending_ || !notifier_ || !notifier_->isEnabled()) return;
    isDispatchPending_ = true;
    QMetaObject::invokeMethod(
        notifier_.get(),
        [this] {
            isDispatchPending_ = false;
            dispatch();
        },
        Qt::QueuedConnection);
}

void X11Connection::dispatch() {
    for (;;) {
        while (!collected_.empty()) {
            const auto event = std::move(collected_.front());
            collected_.pop_front();
            events_.send(*event);
        }
        auto* event = xcb_poll_for_event(connection_);
        if (!event) break;
        collected_.emplace_back(event);
    }
    if (!isUsable()) lose();
}

// A closed socket stays readable for ever. The connection itself stays, in its failed state, for those who hold it.
void X11Connection::lose() {
    notifier_->setEnabled(false);
}

}  // namespace quorvane::platform
