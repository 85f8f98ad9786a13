#pragma once

#include "base/Date.h"
#include "browserhost/TabReport.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace quorvane::platform {

/// The page that each browser has in front, by its process. From any thread.
class PagesInFront {
public:
    void set(BrowserMessage message);
    void forget(std::int64_t browser);
    [[nodiscard]] bool knows(std::int64_t browser) const;

    /// See `BrowserMessages::url`. Of a browser that has said nothing it expects nothing and does not wait.
    [[nodiscard]] std::optional<std::string> url(std::int64_t browser, const std::string& windowTitle,
                                                 Seconds patience);

private:
    mutable std::mutex mutex_;  ///< guards `pages_`
    std::condition_variable isChanged_;
    std::map<std::int64_t, TabReport> pages_;
};

}  // namespace quorvane::platform
