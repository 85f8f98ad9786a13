#include "platform/linux/x11/SyncCounter.h"

#include <cstddef>
#include <xcb/sync.h>

namespace quorvane::platform {

std::uint32_t idleCounter(X11Connection& x11) {
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
        if (std::string_view(name, counters.data->name_len) == "IDLETIME") return counters.data->counter;
    }
    return 0;
}

Channel idleCounterChannel(const X11Connection& x11, std::string question, bool hasCounter) {
    auto channel = x11.channel(std::move(question), "X11 SYNC IDLETIME");
    if (channel.isAvailable && !hasCounter) {
        channel.isAvailable = false;
        channel.reason = "the X server has no counter IDLETIME in the extension SYNC";
        channel.remedy = "Enable SYNC in the X server; an untrusted connection (ssh -X) is not given it.";
    }
    return channel;
}

}  // namespace quorvane::platform
