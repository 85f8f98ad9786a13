#include "platform/linux/browsers/PagesInFront.h"

namespace quorvane::platform {

void PagesInFront::set(BrowserMessage message) {
    {
        const std::lock_guard lock(mutex_);
        pages_[message.browser] = std::move(message.page);
    }
    isChanged_.notify_all();
}

void PagesInFront::forget(std::int64_t browser) {
    const std::lock_guard lock(mutex_);
    pages_.erase(browser);
}

bool PagesInFront::knows(std::int64_t browser) const {
    const std::lock_guard lock(mutex_);
    return pages_.contains(browser);
}

std::optional<std::string> PagesInFront::url(std::int64_t browser, const std::string& windowTitle, Seconds patience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    std::unique_lock lock(mutex_);
    for (;;) {
        const auto page = pages_.find(browser);
        if (page == pages_.end()) return std::nullopt;
        const auto& [url, title, isPrivate] = page->second;
        if (!isPrivate && !url.empty() && !title.empty() && windowTitle.starts_with(title)) return url;
        if (std::chrono::steady_clock::now() >= end) return std::nullopt;
        isChanged_.wait_until(lock, end);
    }
}

}  // namespace quorvane::platform
