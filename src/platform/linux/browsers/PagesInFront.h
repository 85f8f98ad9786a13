#pragma once

#include "base/Date.h"
#include "browserhost/TabReport.h"

#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace quorvane::platform {

/// The page that each host last told of. A browser's process has one for each of its profiles. From any thread.
class PagesInFront {
public:
    using Host = const void*;  ///< tells one from another

    void set(Host host, BrowserMessage message);
    void forget(Host host);
    [[nodiscard]] bool knows(std::int64_t browser) const;

    /// See `BrowserMessages::url`. Of a browser that has said nothing it expects nothing and does not wait.
    [[nodiscard]] std::optional<std::string> url(std::int64_t browser, const std::string& windowTitle,
                                                 Seconds patience);

private:
    struct Told {
        BrowserMessage message;
        std::uint64_t order = 0;  ///< the later, the higher
    };

    [[nodiscard]] bool hasPageOf(std::int64_t browser) const;
    [[nodiscard]] const Told* best(std::int64_t browser, const std::string& windowTitle) const;

    mutable std::mutex mutex_;  ///< guards `told_` and `count_`
    std::condition_variable isChanged_;
    std::map<Host, Told> told_;
    std::uint64_t count_ = 0;
};

}  // namespace quorvane::platform
