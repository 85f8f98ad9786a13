#pragma once

#include "base/Signal.h"
#include "platform/RunLoop.h"
#include "platform/linux/bus/BusListener.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace quorvane::platform {

/// Which of some names have an owner on the bus of the user's session, as they come and go. A bus that hangs holds
/// nobody up for longer than half a second, and is looked for again. Main thread only.
class BusNames {
public:
    BusNames(RunLoop& runLoop, std::vector<std::string> names);

    [[nodiscard]] bool isOwned(const std::string& name) const { return owned_.contains(name); }

    /// Calls `changed` after one of them got its first owner or lost its last.
    Subscription observe(std::function<void()> changed) { return changed_.subscribe(std::move(changed)); }

private:
    void connect();
    void reconnectLater();
    void note(const QDBusMessage& signal);
    void set(std::set<std::string> owned);

    RunLoop& runLoop_;
    std::vector<std::string> names_;
    std::set<std::string> owned_;
    Seconds untilRetry_;
    std::unique_ptr<WorkItem> retry_;
    Signal<> changed_;
    std::unique_ptr<BusListener> bus_;
    Subscription heard_;
    Subscription ended_;
};

}  // namespace quorvane::platform
