#include "platform/linux/x11/XInputPointerEventSource.h"

#include <utility>
#include <xcb/xinput.h>

namespace quorvane::platform {
namespace {

bool negotiate(X11Connection& x11) {
    if (!x11.extension(&xcb_input_id)) return false;
    // A client that speaks less than 2.1 hears no raw events while another holds a grab.
    const auto version = x11.reply(xcb_input_xi_query_version_reply, xcb_input_xi_query_version(x11.xcb(), 2, 2));
    return version && (version->major_version > 2 || (version->major_version == 2 && version->minor_version >= 1));
}

void selectButtonPresses(X11Connection& x11, bool selected) {
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t bits;
    } mask{};
    mask.head.deviceid = XCB_INPUT_DEVICE_ALL_MASTER;
    mask.head.mask_len = 1;
    mask.bits = selected ? XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS : 0;
    xcb_input_xi_select_events(x11.xcb(), x11.root(), 1, &mask.head);
    xcb_flush(x11.xcb());
}

}  // namespace

/// The monitors of one source. The server is asked for events only while there are any.
struct XInputPointerEventSource::Listening {
    X11Connection* x11 = nullptr;  ///< null once the source is gone
    Signal<Point> pressed;
    Subscription events;

    void update() {
        if (x11 && x11->isUsable()) selectButtonPresses(*x11, pressed.listeners() > 0);
    }
};

namespace {

class XInputMonitor final : public PointerEventMonitor {
public:
    XInputMonitor(Subscription subscription, std::function<void()> ended)
        : subscription_(std::move(subscription)), ended_(std::move(ended)) {}
    XInputMonitor(const XInputMonitor&) = delete;
    XInputMonitor& operator=(const XInputMonitor&) = delete;
    ~XInputMonitor() override {
        subscription_.reset();
        ended_();
    }

private:
    Subscription subscription_;
    std::function<void()> ended_;
};

}  // namespace

XInputPointerEventSource::XInputPointerEventSource(X11Connection& x11)
    : x11_(x11), isOffered_(negotiate(x11)), listening_(std::make_shared<Listening>()) {
    listening_->x11 = &x11;
    if (!isOffered_) return;
    // Buttons 1 to 3, the wheel as 4 to 7, and the extra ones all count; nothing of the event is read.
    const auto opcode = x11.extension(&xcb_input_id)->major_opcode;
    listening_->events = x11.observeEvents([this, opcode](const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7f) != XCB_GE_GENERIC) return;
        const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
        if (generic.extension != opcode || generic.event_type != XCB_INPUT_RAW_BUTTON_PRESS) return;
        if (listening_->pressed.listeners() > 0) listening_->pressed.send(pointerPosition());
    });
}

XInputPointerEventSource::~XInputPointerEventSource() {
    listening_->events.reset();
    listening_->x11 = nullptr;
}

std::unique_ptr<PointerEventMonitor> XInputPointerEventSource::addGlobalMonitor(Heard heard) {
    if (!isOffered_ || !x11_.isUsable()) return nullptr;
    auto subscription = listening_->pressed.subscribe(std::move(heard));
    listening_->update();
    return std::make_unique<XInputMonitor>(std::move(subscription), [listening = listening_] { listening->update(); });
}

std::unique_ptr<PointerEventMonitor> XInputPointerEventSource::addLocalMonitor(Heard) {
    return nullptr;
}

Point XInputPointerEventSource::pointerPosition() {
    if (!x11_.isUsable()) return {};
    const auto pointer = x11_.reply(xcb_query_pointer_reply, xcb_query_pointer(x11_.xcb(), x11_.root()));
    return pointer ? Point{.x = static_cast<double>(pointer->root_x), .y = static_cast<double>(pointer->root_y)}
                   : Point{};
}

Channel XInputPointerEventSource::channel() const {
    auto channel = x11_.channel("button and scroll events", "X11 XInput 2.2 raw events");
    if (channel.isAvailable && !isOffered_) {
        channel.isAvailable = false;
        channel.reason = "the X server does not offer the extension XInputExtension in version 2.1 or later";
        channel.remedy = "Enable it in the X server; an untrusted connection (ssh -X) is not given it.";
    }
    return channel;
}

}  // namespace quorvane::platform
