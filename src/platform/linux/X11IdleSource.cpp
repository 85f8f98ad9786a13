#include "platform/linux/X11IdleSource.h"

#include <cstddef>
#include <xcb/screensaver.h>
#include <xcb/sync.h>

namespace quorvane::platform {
namespace {

std::uint32_t findSystemCounter(X11Connection& x11, std::string_view wanted) {
    if (!x11.extension(&xcb_sync_id)) return 0;
    // The server answers nothing else of this extension before.
    if (!x11.reply(xcb_sync_initialize_reply, xcb_sync_initialize(x11.xcb(), 3, 1))) return 0;
    const auto list = x11.reply(xcb_sync_list_system_counters_reply, xcb_sync_list_system_counters(x11.xcb()));
    if (!list) return 0;
    auto counters = xcb_sync_list_system_counters_counters_iterator(list.get());
    for (; counters.rem > 0; xcb_sync_systemcounter_next(&counters)) {
        // xcb_sync_systemcounter_name() of libxcb 1.15 skips the structure's padding too and cuts off two letters.
        const auto* name = reinterpret_cast<const char*>(counters.data) + offsetof(xcb_sync_systemcounter_t, name_len) +
                           sizeof(counters.data->name_len);
        if (std::string_view(name, counters.data->name_len) == wanted) return counters.data->counter;
    }
    return 0;
}

}  // namespace

X11IdleSource::X11IdleSource(X11Connection& x11)
    : x11_(x11), idleCounter_(findSystemCounter(x11, "IDLETIME")),
      hasScreenSaver_(x11.extension(&xcb_screensaver_id) != nullptr) {}

Seconds X11IdleSource::secondsSinceLastInput() {
    if (idleCounter_ && x11_.isUsable())
        if (const auto counter =
                x11_.reply(xcb_sync_query_counter_reply, xcb_sync_query_counter(x11_.xcb(), idleCounter_))) {
            const auto value = counter->counter_value;
            return std::chrono::milliseconds{(std::int64_t{value.hi} << 32) | value.lo};
        }
    if (hasScreenSaver_ && x11_.isUsable())
        if (const auto info =
                x11_.reply(xcb_screensaver_query_info_reply, xcb_screensaver_query_info(x11_.xcb(), x11_.root())))
            return std::chrono::milliseconds{info->ms_since_user_input};
    return -1s;
}

Channel X11IdleSource::channel() const {
    auto channel = x11_.channel("system idle time", idleCounter_ ? "X11 SYNC IDLETIME" : "X11 MIT-SCREEN-SAVER");
    if (channel.isAvailable && !idleCounter_ && !hasScreenSaver_) {
        channel.isAvailable = false;
        channel.reason = "the X server offers neither the SYNC counter IDLETIME nor the extension MIT-SCREEN-SAVER";
        channel.remedy = "Enable one of them in the X server; an untrusted connection (ssh -X) is given neither.";
    }
    return channel;
}

}  // namespace quorvane::platform
