#include "platform/linux/x11/RecordKeyEventSource.h"

#include "base/Weak.h"

#include <QSocketNotifier>
#include <utility>
#include <xcb/record.h>
#include <xcb/xcbext.h>

namespace quorvane::platform {
namespace {

/// Asks the server to record key events of all clients. 0 if it refuses.
xcb_record_context_t createContext(X11Connection& x11, KeyEvents events) {
    if (!x11.extension(&xcb_record_id)) return 0;
    const auto context = xcb_generate_id(x11.xcb());
    xcb_record_range_t range{};
    range.device_events.first = XCB_KEY_PRESS;
    range.device_events.last = events == KeyEvents::keyDown ? XCB_KEY_PRESS : XCB_KEY_RELEASE;
    const xcb_record_client_spec_t everybody = XCB_RECORD_CS_ALL_CLIENTS;
    const auto cookie = xcb_record_create_context_checked(x11.xcb(), context, 0, 1, 1, &everybody, &range);
    return x11.succeeded(cookie) ? context : 0;
}

struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

/// The context is controlled from our usual connection. What it records comes as a stream of replies to one request,
/// which needs a second connection that asks nothing else.
class RecordKeyEventTap final : public KeyEventTap {
public:
    RecordKeyEventTap(X11Connection& x11, xcb_record_context_t context, std::function<void()> heard)
        : x11_(x11), context_(context), heard_(std::move(heard)) {}
    RecordKeyEventTap(const RecordKeyEventTap&) = delete;
    RecordKeyEventTap& operator=(const RecordKeyEventTap&) = delete;
    ~RecordKeyEventTap() override {
        enable(false);
        if (isDraining_) {  // then it is the notifier that calls us
            notifier_->setEnabled(false);
            notifier_->disconnect();
            notifier_.release()->deleteLater();
        }
        if (x11_.isUsable()) {
            xcb_record_free_context(x11_.xcb(), context_);
            xcb_flush(x11_.xcb());
        }
    }

    [[nodiscard]] bool attach() override {
        if (data_) return true;
        data_.reset(xcb_connect(x11_.displayName().c_str(), nullptr));
        if (xcb_connection_has_error(data_.get())) {
            data_.reset();
            return false;
        }
        const int socket = xcb_get_file_descriptor(data_.get());
        notifier_ = std::make_unique<QSocketNotifier>(socket, QSocketNotifier::Read);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { drain(); });
        return true;
    }

    void enable(bool enabled) override {
        if (enabled == isEnabled_ || !data_) return;
        isEnabled_ = enabled;
        if (enabled) {
            sequence_ = xcb_record_enable_context(data_.get(), context_).sequence;
            xcb_flush(data_.get());
        } else if (x11_.isUsable()) {
            // Waiting for the server keeps a later enabling from overtaking this.
            [[maybe_unused]] const bool done = x11_.succeeded(xcb_record_disable_context_checked(x11_.xcb(), context_));
            xcb_discard_reply(data_.get(), sequence_);
        }
    }

private:
    void drain() {
        const auto alive = weak_.handle();
        isDraining_ = true;
        void* answer = nullptr;
        xcb_generic_error_t* error = nullptr;
        while (alive && isEnabled_ && xcb_poll_for_reply(data_.get(), sequence_, &answer, &error)) {
            const XcbOwned<xcb_generic_error_t> refused(error);
            const XcbOwned<xcb_record_enable_context_reply_t> reply(
                static_cast<xcb_record_enable_context_reply_t*>(answer));
            if (!reply) {
                isEnabled_ = false;
                break;
            }
            constexpr int fromServer = 0;  // other categories: the stream begins or ends
            constexpr int eventSize = 32;
            int events =
                reply->category == fromServer ? xcb_record_enable_context_data_length(reply.get()) / eventSize : 0;
            for (; events > 0 && alive; --events)
                heard_();
        }
        if (!alive) return;
        isDraining_ = false;
        // While it is off, nothing that arrives is wanted. A closed socket stays readable for ever.
        while (auto* event = xcb_poll_for_event(data_.get()))
            std::free(event);
        if (xcb_connection_has_error(data_.get())) notifier_->setEnabled(false);
    }

    X11Connection& x11_;
    xcb_record_context_t context_;
    std::function<void()> heard_;
    std::unique_ptr<xcb_connection_t, Disconnect> data_;
    std::unique_ptr<QSocketNotifier> notifier_;
    unsigned int sequence_ = 0;
    bool isEnabled_ = false;
    bool isDraining_ = false;
    WeakSource<RecordKeyEventTap> weak_{*this};
};

}  // namespace

std::unique_ptr<KeyEventTap> RecordKeyEventSource::createTap(KeyEvents events, std::function<void()> heard) {
    const auto context = createContext(x11_, events);
    if (!context) return nullptr;
    return std::make_unique<RecordKeyEventTap>(x11_, context, std::move(heard));
}

Channel RecordKeyEventSource::channel() const {
    auto channel = x11_.channel("key events", "X11 RECORD");
    if (!channel.isAvailable) return channel;
    if (const auto context = createContext(x11_, KeyEvents::keyDown)) {
        xcb_record_free_context(x11_.xcb(), context);
        xcb_flush(x11_.xcb());
        return channel;
    }
    channel.isAvailable = false;
    channel.reason = "the X server refuses the extension RECORD";
    channel.remedy = "Enable RECORD in the X server; an untrusted connection (ssh -X) is not given it.";
    return channel;
}

}  // namespace quorvane::platform
