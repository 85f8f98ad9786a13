#include "platform/InBackground.h"
#include "platform/PrivateBrowsing.h"
#include "tracking/ActivityTracker.h"
#include "tracking/SteadyTitle.h"

#include <algorithm>
#include <utility>

namespace quorvane {
namespace {

constexpr Seconds cacheValidityInterval = 60s;  ///< of documents, at a switch of applications

/// A whole tick, less what its timer may be early.
constexpr Seconds standing = 9s;

bool isEmpty(const std::optional<std::string>& text) {
    return !text || text->empty();
}

/// The window's own title, unless the window is one of private browsing or can't be told from one. Of a page whose
/// address is told the title is no secret.
std::optional<std::string> recordableTitle(const std::string& bundleId, const Attention& attention) {
    namespace PrivateBrowsing = platform::PrivateBrowsing;
    if (attention.title.empty() || PrivateBrowsing::isMarked(bundleId, attention.title)) return std::nullopt;
    if (!attention.page && PrivateBrowsing::hidesMark(bundleId)) return std::nullopt;
    return attention.title;
}

}  // namespace

/// A browser's channels and relatives are browsers too, known by the one in whose way they are asked.
bool ActivityTracker::isBrowser(const std::string& bundleId) {
    return ActivityTrackingPolicy::isBrowser(desktop_.automation().scriptIdentity(bundleId));
}

/// What is looked at now, as far as it is known without asking any application.
Attention ActivityTracker::attention(const std::string& bundleId) {
    Attention seen{.title = desktop_.foreground().frontmostWindowTitle().value_or(""), .page = std::nullopt};
    if (services_.browserURL == nullptr || !isBrowser(bundleId)) return seen;
    seen.page = services_.browserURL->toldURL();
    if (!seen.page && cachedBrowserURL_ && cachedBrowserURL_->bundleId == bundleId) seen.page = cachedBrowserURL_->url;
    return seen;
}

/// Begins a record of what is looked at. What has to be asked for comes later and completes it.
void ActivityTracker::begin(const ForegroundApplicationSnapshot& application, Attention attention, Date at) {
    const std::string& bundleId = application.bundleIdentifier;
    const auto page = attention.page;
    const WindowInfo window = windowInfoAtStart(application, attention);
    attentionWatch_.begin(std::move(attention));
    startNewRecord({.at = at, .application = application, .window = window, .url = page});
    if (!currentRecord_) return;
    const auto cached = windowInfoCache_.find(bundleId);
    if (cached == windowInfoCache_.end()) fetchWindowInfoAsync(bundleId, attentionWatch_.shown().title);
    if (!page && isBrowser(bundleId)) fetchBrowserURLAsync(false);
}

/// Somebody who turned to something else in the same application, and stayed with it, has begun another record there.
void ActivityTracker::splitIfTurned(const ForegroundApplicationSnapshot& application, const ClockLook& look) {
    const Attention seen = attention(application.bundleIdentifier);
    const auto since = attentionWatch_.see(seen, look, standing);
    if (!since || !currentRecord_) return;
    const Date at = std::max(since->now, currentRecord_->startTime() + minimumDuration);
    // A page that was asked for belongs to the title that it had; one that the browser tells is of now.
    const bool isPageKnown = services_.browserURL != nullptr && services_.browserURL->toldURL() == seen.page;
    const bool hasTurnedPage = !isPageKnown && seen.page == attentionWatch_.shown().page;
    if (hasTurnedPage) cachedBrowserURL_.reset();
    finalizeCurrentRecord(at);
    begin(application, {seen.title, hasTurnedPage ? std::nullopt : seen.page}, at);
}

/// The title as it is now, and the document that was found with this title a moment ago.
WindowInfo ActivityTracker::windowInfoAtStart(const ForegroundApplicationSnapshot& application,
                                              const Attention& attention) {
    const auto own = recordableTitle(application.bundleIdentifier, attention);
    const auto cached = windowInfoCache_.find(application.bundleIdentifier);
    if (cached == windowInfoCache_.end()) return {.title = own, .document = std::nullopt};
    const auto& [info, titleThen, readAt] = cached->second;
    if (runLoop_.uptime() - readAt >= cacheValidityInterval || steadyTitle(titleThen) != steadyTitle(attention.title)) {
        windowInfoCache_.erase(cached);
        return {.title = own, .document = std::nullopt};
    }
    console_.line("ActivityTracker: 使用缓存的窗口信息（应用切换但缓存有效）");
    return {.title = titleThen == attention.title ? info.title : own, .document = info.document};
}

void ActivityTracker::fetchWindowInfoAsync(const std::string& bundleId, const std::string& title) {
    if (isFetchingWindowInfo_) return;  // whoever comes back begins the next one
    isFetchingWindowInfo_ = true;
    platform::inBackground(
        runLoop_, [&source = services_.windowInfo, bundleId] { return source.windowInfo(bundleId); },
        [weak = weak_.handle(), bundleId, title, record = currentRecord_->id()](std::future<WindowInfo> fetched) {
            if (auto* self = weak.get()) self->noteWindowInfo(bundleId, title, record, fetched.get());
        });
}

/// Completes the record for which it was asked, if that is still open and its window still shows the same.
void ActivityTracker::noteWindowInfo(const std::string& bundleId, const std::string& title, const Uuid& record,
                                     WindowInfo info) {
    isFetchingWindowInfo_ = false;
    if (!currentRecord_) return;
    const std::string current = currentRecord_->appBundleId().value_or("");
    if (currentRecord_->id() != record) return fetchWindowInfoAsync(current, attentionWatch_.shown().title);
    const std::string shown = desktop_.foreground().frontmostWindowTitle().value_or(title);
    if (steadyTitle(shown) != steadyTitle(title)) return;
    if (!isEmpty(info.document))
        console_.line("ActivityTracker: 成功获取文档信息 - 标题: {}, 路径: <redacted>", info.title.value_or("无"));
    else if (!isEmpty(info.title))
        console_.line("ActivityTracker: 无法获取文档路径，使用窗口标题作为备用信息: {}", *info.title);
    else
        console_.line("ActivityTracker: 无法获取文档路径和窗口标题，将继续使用基本应用信息");
    if (!isEmpty(info.title)) currentRecord_->windowTitle = info.title;
    if (!isEmpty(info.document)) currentRecord_->documentPath = info.document;
    windowInfoCache_.insert_or_assign(bundleId, CachedWindowInfo{std::move(info), title, runLoop_.uptime()});
    classifyAgain();
}

void ActivityTracker::fetchBrowserURLAsync(bool deferred) {
    if (isFetchingBrowserURL_ || services_.browserURL == nullptr) return;
    isFetchingBrowserURL_ = true;
    platform::inBackground(
        runLoop_, [&source = *services_.browserURL] { return source.frontURL(); },
        [weak = weak_.handle(), record = currentRecord_->id(), deferred](std::future<std::optional<std::string>> url) {
            if (auto* self = weak.get()) self->noteBrowserURL(record, url.get(), deferred);
        });
}

void ActivityTracker::noteBrowserURL(const Uuid& record, const std::optional<std::string>& url, bool deferred) {
    isFetchingBrowserURL_ = false;
    if (!currentRecord_) return;
    const std::string bundleId = currentRecord_->appBundleId().value_or("");
    if (currentRecord_->id() != record) {
        // The answer is of what was in front before. The one that is now could not ask meanwhile.
        if (isBrowser(bundleId) && !currentRecord_->url()) fetchBrowserURLAsync(false);
        return;
    }
    if (isEmpty(url)) return;
    cachedBrowserURL_ = {bundleId, *url, runLoop_.uptime()};
    if (isEmpty(currentRecord_->windowTitle()))
        currentRecord_->windowTitle = recordableTitle(bundleId, {attentionWatch_.shown().title, url});
    if (currentRecord_->url() == url) return;
    // Another page is another record, once it has stood for long enough.
    if (currentRecord_->url() && trackingSettings().splitsByTitle) return;
    currentRecord_->url = url;
    if (deferred) console_.line("ActivityTracker: 延迟更新浏览器URL: <redacted>");
    classifyAgain();
}

}  // namespace quorvane
