#include "platform/linux/x11/SyncReturnSource.h"

#include "platform/linux/x11/SyncCounter.h"

#include <utility>
#include <xcb/sync.h>

namespace quorvane::platform {
namespace {

constexpr std::uint32_t justNow = 1000;  // milliseconds

}  // namespace

class SyncReturnSource::Alarm : public ReturnWatch {
public:
    Alarm(X11Connection& x11, std::uint32_t counter, std::function<void()> returned)
        : x11_(x11), id_(xcb_generate_id(x11.xcb())), returned_(std::move(returned)) {
        const int notify = x11.extension(&xcb_sync_id)->first_event + XCB_SYNC_ALARM_NOTIFY;
        events_ = x11.observeEvents([this, notify](const xcb_generic_event_t& event) {
            if ((event.response_type & 0x7f) != notify) return;
            if (reinterpret_cast<const xcb_sync_alarm_notify_event_t&>(event).alarm != id_) return;
            // It may take this alarm with it.
            if (const auto call = std::exchange(returned_, nullptr)) call();
        });
        // A comparison without a step fires once and then rests. It also sees an input that was faster than we are.
        const xcb_sync_create_alarm_value_list_t values{.counter = counter,
                                                        .valueType = XCB_SYNC_VALUETYPE_ABSOLUTE,
                                                        .value = {.hi = 0, .lo = justNow},
                                                        .testType = XCB_SYNC_TESTTYPE_NEGATIVE_COMPARISON,
                                                        .delta = {.hi = 0, .lo = 0},
                                                        .events = 1};
        xcb_sync_create_alarm_aux(x11.xcb(), id_,
                                  XCB_SYNC_CA_COUNTER | XCB_SYNC_CA_VALUE_TYPE | XCB_SYNC_CA_VALUE |
                                      XCB_SYNC_CA_TEST_TYPE | XCB_SYNC_CA_DELTA | XCB_SYNC_CA_EVENTS,
                                  &values);
        xcb_flush(x11.xcb());
    }
    Alarm(const Alarm&) = delete;
    Alarm& operator=(const Alarm&) = delete;
    ~Alarm() override {
        xcb_sync_destroy_alarm(x11_.xcb(), id_);
        xcb_flush(x11_.xcb());
    }

private:
    X11Connection& x11_;
    xcb_sync_alarm_t id_;
    std::function<void()> returned_;
    Subscription events_;
};

SyncReturnSource::SyncReturnSource(X11Connection& x11) : x11_(x11), counter_(idleCounter(x11)) {}

std::unique_ptr<ReturnWatch> SyncReturnSource::watch(std::function<void()> returned) {
    if (!counter_ || !x11_.isUsable()) return nullptr;
    return std::make_unique<Alarm>(x11_, counter_, std::move(returned));
}

Channel SyncReturnSource::channel() const {
    return idleCounterChannel(x11_, "return from an absence", counter_ != 0);
}

}  // namespace quorvane::platform
