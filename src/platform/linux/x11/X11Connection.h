#pragma once

#include "base/Signal.h"
#include "platform/Channel.h"
#include "platform/linux/loop/Deadline.h"

#include <cstdint>
#include <cstdlib>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <xcb/xcb.h>

class QSocketNotifier;

namespace quorvane::platform {

struct FreeWithC {
    void operator()(void* memory) const { std::free(memory); }
};

/// Replies, errors and events of xcb, which come from malloc.
template <class T>
using XcbOwned = std::unique_ptr<T, FreeWithC>;

/// The value of a window's property.
struct X11Property {
    xcb_atom_t type = XCB_ATOM_NONE;
    std::string bytes;

    /// The first 32-bit value; none if there is none. Some window managers store more than one.
    [[nodiscard]] std::optional<std::uint32_t> firstCardinal() const;
};

/// Our own connection to the X server. Where there is none, or once the server has gone away, it answers nothing, says
/// why, and costs nothing. One thread at a time; one that the run loop reads is the main thread's.
class X11Connection {
public:
    /// Who takes what the server sends of its own accord.
    enum class Reader {
        runLoop,  ///< the main thread's; observers hear the events
        nobody    ///< no run loop is needed, and events are dropped
    };

    /// Connects to the server that DISPLAY names.
    explicit X11Connection(Reader reader = Reader::runLoop);

    /// Connects to nothing: on this desktop X11 is not the one to ask. The refusal's name says what is.
    explicit X11Connection(Channel refusal);

    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;
    ~X11Connection();

    [[nodiscard]] bool isUsable() const;

    /// For requests, which may be sent at any time and have no effect while the connection is not usable.
    /// Null if there never was one: ask `isUsable()` first.
    [[nodiscard]] xcb_connection_t* xcb() const { return connection_; }
    [[nodiscard]] xcb_window_t root() const { return root_; }

    /// What DISPLAY was; connections that belong to this one go to the same server.
    [[nodiscard]] const std::string& displayName() const { return displayName_; }

    /// The number of an interned name, remembered after the first call.
    [[nodiscard]] xcb_atom_t atom(std::string_view name);

    /// Waits for the answer to a request: `reply(xcb_get_property_reply, cookie)`. None if the server refused it.
    template <class Reply, class Cookie>
    [[nodiscard]] XcbOwned<Reply> reply(Reply* (*fetch)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
                                        Cookie cookie) {
        XcbOwned<Reply> answer(deadline_ ? static_cast<Reply*>(replyInTime(cookie.sequence))
                                         : fetch(connection_, cookie, nullptr));
        collectEvents();
        return answer;
    }

    /// From now on `reply` and what stands on it wait until then and no longer: while another program has grabbed the
    /// server it answers nobody. What has not come by then counts as refused.
    void setDeadline(Deadline deadline) { deadline_ = deadline; }

    /// Waits until a request whose cookie comes from a "checked" function has been carried out; false if refused.
    [[nodiscard]] bool succeeded(xcb_void_cookie_t cookie);

    /// Asks for a property, up to 16 KiB of it; `property(cookie)` waits for the answer, none if the window is gone.
    [[nodiscard]] xcb_get_property_cookie_t askProperty(xcb_window_t window, std::string_view name);
    [[nodiscard]] std::optional<X11Property> property(xcb_get_property_cookie_t cookie);

    /// The extension's opcode and first event; null if the server lacks it or hides it from us.
    [[nodiscard]] const xcb_query_extension_reply_t* extension(xcb_extension_t* extension);

    /// All events, each in a turn of the run loop of its own call stack.
    Subscription observeEvents(std::function<void(const xcb_generic_event_t&)> happened) {
        return events_.subscribe(std::move(happened));
    }

    /// The answer of a source that stands on this connection, as far as the connection is concerned: available, or why
    /// not.
    [[nodiscard]] Channel channel(std::string question, std::string name) const;

    /// The same for a source that needs an extension, "MIT-SCREEN-SAVER", which the server may not offer.
    [[nodiscard]] Channel extensionChannel(std::string question, const std::string& extension, bool isOffered) const;

private:
    [[nodiscard]] void* replyInTime(unsigned sequence);
    void collectEvents();
    void dispatch();
    void lose();

    std::string displayName_;
    Channel refusal_;  ///< name, reason and remedy when no connection could be made
    xcb_connection_t* connection_ = nullptr;
    xcb_window_t root_ = XCB_WINDOW_NONE;
    std::optional<Deadline> deadline_;
    std::map<std::string, xcb_atom_t, std::less<>> atoms_;
    std::deque<XcbOwned<xcb_generic_event_t>> collected_;
    bool isDispatchPending_ = false;
    std::unique_ptr<QSocketNotifier> notifier_;
    Signal<const xcb_generic_event_t&> events_;
};

}  // namespace quorvane::platform
