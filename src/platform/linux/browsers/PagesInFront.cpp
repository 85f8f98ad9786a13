#include "platform/linux/browsers/PagesInFront.h"

#include <algorithm>
#include <utility>

namespace quorvane::platform {
namespace {

/// Without a process any browser may be meant.
bool isOf(const BrowserMessage& message, std::int64_t browser) {
    return browser == 0 || message.browser == browser;
}

}  // namespace

void PagesInFront::set(Host host, BrowserMessage message) {
    {
        const std::lock_guard lock(mutex_);
        told_[host] = {.message = std::move(message), .order = ++count_};
    }
    isChanged_.notify_all();
}

void PagesInFront::forget(Host host) {
    const std::lock_guard lock(mutex_);
    told_.erase(host);
}

bool PagesInFront::knows(std::int64_t browser) const {
    const std::lock_guard lock(mutex_);
    return hasPageOf(browser);
}

bool PagesInFront::hasPageOf(std::int64_t browser) const {
    return std::any_of(told_.begin(), told_.end(),
                       [&](const auto& each) { return isOf(each.second.message, browser); });
}

/// The page whose title stands longest at the beginning of the window's. Of equal ones the one that was told last: its
/// window has come to the front since.
const PagesInFront::Told* PagesInFront::best(std::int64_t browser, const std::string& windowTitle) const {
    const Told* best = nullptr;
    for (const auto& [host, told] : told_) {
        const auto& page = told.message.page;
        if (!isOf(told.message, browser) || page.isPrivate || page.url.empty() || page.title.empty() ||
            !windowTitle.starts_with(page.title))
            continue;
        const auto rank = [](const Told& one) { return std::pair(one.message.page.title.size(), one.order); };
        if (best == nullptr || rank(*best) < rank(told)) best = &told;
    }
    return best;
}

std::optional<std::string> PagesInFront::url(std::int64_t browser, const std::string& windowTitle, Seconds patience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    std::unique_lock lock(mutex_);
    for (;;) {
        if (!hasPageOf(browser)) return std::nullopt;
        if (const auto* told = best(browser, windowTitle)) return told->message.page.url;
        if (std::chrono::steady_clock::now() >= end) return std::nullopt;
        isChanged_.wait_until(lock, end);
    }
}

}  // namespace quorvane::platform
