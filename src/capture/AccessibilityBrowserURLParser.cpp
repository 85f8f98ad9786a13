#include "capture/AccessibilityBrowserURLParser.h"

#include "base/RegularExpressionSearch.h"
#include "base/Text.h"
#include "base/Url.h"
#include "capture/AccessibilityWindowHelper.h"
#include "capture/AccessibleAttribute.h"
#include "platform/PrivateBrowsing.h"

#include <algorithm>

namespace quorvane {
namespace {

/// Elements that lie this deep below the window are no longer looked at.
constexpr int maximumDepth = 7;

/// From the likeliest to the loosest.
constexpr const char* titleExpressions[] = {R"(https?://[\S]+)", R"(file://[\S]+)", R"([A-Za-z0-9.+-]+://[\S]+)"};

/// An escaped line end in a host would begin a line of its own in the log.
bool hasControlCharacter(std::string_view text) {
    return std::any_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

}  // namespace

std::optional<std::string>
AccessibilityBrowserURLParser::getURL(const std::string& bundleId,
                                      const std::optional<platform::RunningApplication>& application) {
    if (!accessibility_.isProcessTrusted()) {
        console_.line("AccessibilityBrowserURLParser: 辅助功能权限未授权，无法解析URL");
        return std::nullopt;
    }
    const auto asked = application ? application : applications_.frontmost();
    if (!asked || asked->bundleIdentifier != bundleId) {
        console_.line("AccessibilityBrowserURLParser: 前台应用已变更或不可用");
        return std::nullopt;
    }
    const auto window = AccessibilityWindowHelper::focusedWindow(accessibility_, asked->processIdentifier);
    if (!window) {
        console_.line("AccessibilityBrowserURLParser: 无法定位前台窗口");
        return std::nullopt;
    }
    if (const auto url = attributeURL(*window)) return normalized(*url);
    SearchBudget budget(stop_);
    if (const auto page = webArea(*window, budget)) {
        if (const auto url = attributeURL(*page)) return normalized(*url);
    }
    const auto title = AccessibleAttribute::text(accessibility_, *window, platform::AccessibleName::title);
    if (title && !platform::PrivateBrowsing::isMarked(bundleId, *title)) {
        if (const auto url = titleURL(*title)) return normalized(*url);
    }
    console_.line("AccessibilityBrowserURLParser: 未能从AX获取到URL");
    return std::nullopt;
}

std::optional<std::string> AccessibilityBrowserURLParser::attributeURL(const platform::AccessibleElement& element) {
    for (const auto name :
         {platform::AccessibleName::url, platform::AccessibleName::document, platform::AccessibleName::value}) {
        auto url = AccessibleAttribute::text(accessibility_, element, name);
        if (!url) continue;
        console_.line("AccessibilityBrowserURLParser: 通过{}获取URL: {}", name, sanitizeForLog(*url));
        return url;
    }
    return std::nullopt;
}

std::optional<platform::AccessibleElement>
AccessibilityBrowserURLParser::webArea(const platform::AccessibleElement& element, SearchBudget& budget, int depth) {
    if (depth == maximumDepth || !budget.visit()) return std::nullopt;
    if (AccessibleAttribute::text(accessibility_, element, platform::AccessibleName::role) ==
        platform::AccessibleName::webAreaRole)
        return element;
    const auto children = AccessibleAttribute::elements(accessibility_, element, platform::AccessibleName::children);
    for (const auto& child : children) {
        if (auto found = webArea(child, budget, depth + 1)) return found;
    }
    return std::nullopt;
}

std::optional<std::string> AccessibilityBrowserURLParser::titleURL(const std::string& title) {
    RegularExpressionSearch search;
    for (const char* expression : titleExpressions) {
        auto url = search.firstMatch(expression, title);
        if (!url) continue;
        console_.line("AccessibilityBrowserURLParser: 通过窗口标题解析URL: {}", sanitizeForLog(*url));
        return url;
    }
    return std::nullopt;
}

std::string AccessibilityBrowserURLParser::sanitizeForLog(std::string_view url) {
    const auto parts = urlParts(url);
    if (!parts || hasControlCharacter(parts->host)) return "<redacted>";
    if (parts->host.empty()) return parts->scheme + ":<redacted>";
    return parts->scheme + "://" + parts->host + (parts->path.empty() ? "" : "/...");
}

std::optional<std::string> AccessibilityBrowserURLParser::normalized(std::string_view url) {
    auto trimmed = text::trimmedWithNewlines(url);
    if (trimmed.empty()) return std::nullopt;
    // "www.example.com:8080" does parse, with "www.example.com" as its scheme.
    if (trimmed.starts_with("www.") && !urlParts(trimmed)) return "https://" + trimmed;
    return trimmed;
}

}  // namespace quorvane
