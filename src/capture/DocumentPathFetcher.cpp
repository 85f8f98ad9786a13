#include "capture/DocumentPathFetcher.h"

#include "base/Text.h"
#include "base/Url.h"
#include "capture/AccessibilityBrowserURLParser.h"
#include "capture/AccessibilityWindowHelper.h"
#include "capture/ChatTitleSearch.h"
#include "capture/DocumentScripts.h"
#include "platform/PrivateBrowsing.h"

#include <fmt/format.h>
#include <variant>

namespace quorvane {
namespace {

namespace AccessibleName = platform::AccessibleName;

bool hasText(const std::optional<std::string>& text) {
    return text && !text->empty();
}

bool isApplication(const platform::RunningApplication& application, const std::string& bundleId) {
    return application.bundleIdentifier &&
           text::lowercased(*application.bundleIdentifier) == text::lowercased(bundleId);
}

/// A text that is no URL; a URL stands for a page and not for a title or a file's path.
std::optional<std::string> stringValue(platform::Accessibility& accessibility,
                                       const platform::AccessibleElement& element, std::string_view name) {
    const auto value = accessibility.attribute(element, name);
    const auto* text = value ? std::get_if<platform::AccessibleText>(&*value) : nullptr;
    return text && !text->isUrl ? std::optional(text->text) : std::nullopt;
}

/// A window of private browsing leaves nothing, neither in a record nor in a line.
bool isMarkedPrivate(const platform::RunningApplication& application,
                     const DocumentPathFetcher::AccessibilityInfo& info) {
    const std::string bundleId = application.bundleIdentifier.value_or("");
    return platform::PrivateBrowsing::isMarked(bundleId, application.windowTitle) ||
           platform::PrivateBrowsing::isMarked(bundleId, info.title.value_or(""));
}

std::string description(const platform::ScriptError& error, const std::string& message) {
    return fmt::format("{{NSAppleScriptErrorMessage = \"{}\"; NSAppleScriptErrorNumber = {};}}", message, error.number);
}

std::string replaced(std::string text, std::string_view part, std::string_view with) {
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + with.size()))
        text.replace(at, part.size(), with);
    return text;
}

std::string_view lastPathComponent(std::string_view path) {
    const auto end = path.find_last_not_of('/');
    if (end == std::string_view::npos) return path.substr(0, 1);
    path = path.substr(0, end + 1);
    return path.substr(path.rfind('/') + 1);
}

}  // namespace

WindowInfo DocumentPathFetcher::getDocumentInfo(const std::string& bundleId) {
    const auto application = applications_.frontmost();
    if (!application) {
        console_.line("DocumentPathFetcher: 无法获取前台应用");
        return {};
    }
    if (!isApplication(*application, bundleId)) {
        console_.line("DocumentPathFetcher: 前台应用不匹配");
        return {};
    }
    const AccessibilityInfo info = readAccessibilityInfo(*application, bundleId);
    if (isMarkedPrivate(*application, info)) return {};
    WindowInfo found{.title = hasText(info.chatTitle) ? info.chatTitle : info.title, .document = info.document};
    if (!hasText(found.document)) {
        if (auto document = getDocumentPathByScript(bundleId); hasText(document)) found.document = document;
    }
    if (hasText(info.chatTitle))
        console_.line("DocumentPathFetcher: 使用聊天上下文标题: {}", *info.chatTitle);
    else if (hasText(found.title))
        console_.line("DocumentPathFetcher: 成功获取窗口标题: {}", *found.title);
    if (hasText(found.document))
        console_.line("DocumentPathFetcher: 成功获取文档路径: {}", sanitizeForLog(*found.document));

    // Where windows carry their title for everybody to read, a record needn't go without one because accessibility is
    // off or the application takes no part in it.
    if (!found.title && !application->windowTitle.empty() && !application->mayBePrivate)
        found.title = application->windowTitle;
    return found;
}

DocumentPathFetcher::AccessibilityInfo
DocumentPathFetcher::readAccessibilityInfo(const platform::RunningApplication& application,
                                           const std::string& bundleId) {
    if (!accessibility_.isProcessTrusted()) {
        console_.line("DocumentPathFetcher: Accessibility API 未授权");
        return {};
    }
    const auto window = AccessibilityWindowHelper::focusedWindow(accessibility_, application.processIdentifier);
    if (!window) {
        console_.line("DocumentPathFetcher: 无法获取焦点窗口");
        return {};
    }
    AccessibilityInfo info{.title = stringValue(accessibility_, *window, AccessibleName::title),
                           .document = stringValue(accessibility_, *window, AccessibleName::document)};
    if (ChatTitleSearch::isChatApplication(bundleId)) {
        if (const auto element = accessibility_.application(application.processIdentifier))
            info.chatTitle = ChatTitleSearch::find(accessibility_, *element, *window, bundleId, stop_);
    }
    return info;
}

std::optional<std::string> DocumentPathFetcher::getDocumentPathByScript(const std::string& bundleId) {
    if (!applications_.isRunning(bundleId)) {
        console_.line("DocumentPathFetcher: 应用 {} 未在运行，跳过 AppleScript", bundleId);
        return getFallbackInfo(bundleId);
    }
    const auto* row = DocumentScripts::row(automation_.scriptIdentity(bundleId));
    if (!row) {
        console_.line("DocumentPathFetcher: 应用 {} 不支持文档路径获取", bundleId);
        return std::nullopt;
    }
    // Real scripts answer for an application without a document with a fixed word of their own. A channel without
    // scripts answers -1728 or nothing then, and the fallback tells more than that word would.
    const auto result = automation_.run(DocumentScripts::script(*row, bundleId));
    if (const auto* error = std::get_if<platform::ScriptError>(&result)) {
        report(*error);
    } else if (const auto& document = std::get<std::string>(result); !document.empty()) {
        console_.line("DocumentPathFetcher: 成功获取文档路径: {}", sanitizeForLog(document));
        return document;
    }
    console_.line("DocumentPathFetcher: AppleScript 未能获取到文档路径，尝试备用方案");
    return getFallbackInfo(bundleId);
}

void DocumentPathFetcher::report(const platform::ScriptError& error) {
    const std::string message = error.message.empty() ? "未知错误" : error.message;
    console_.line("DocumentPathFetcher: AppleScript 执行错误 ({}): {}", error.number, message);
    if (error.number == -600) console_.line("DocumentPathFetcher: 错误 -600 通常表示应用不响应 AppleScript 或权限问题");
    if (error.number == -1728) console_.line("DocumentPathFetcher: 错误 -1728 表示应用不支持该 AppleScript 命令");
    console_.line("DocumentPathFetcher: AppleScript 执行错误: {}", description(error, message));
}

std::optional<std::string> DocumentPathFetcher::getFallbackInfo(const std::string& bundleId) {
    const auto application = applications_.frontmost();
    if (!application || !isApplication(*application, bundleId)) {
        console_.line("DocumentPathFetcher: 前台应用不匹配，无法使用备用方案");
        return std::nullopt;
    }
    const AccessibilityInfo info = readAccessibilityInfo(*application, bundleId);
    if (text::lowercased(bundleId) == "com.apple.dt.xcode" && info.title) {
        const std::string title = replaced(replaced(*info.title, " — Edited", ""), " — ", " | ");
        console_.line("DocumentPathFetcher: 从 Xcode 窗口标题提取文件信息: {}", title);
        return title;
    }
    if (hasText(info.document)) return info.document;
    if (hasText(info.title)) {
        console_.line("DocumentPathFetcher: 使用窗口标题作为备用信息: {}", *info.title);
        return info.title;
    }
    const std::string name = application->localizedName.value_or(application->bundleIdentifier.value_or("Unknown"));
    console_.line("DocumentPathFetcher: 使用应用名称作为备用信息: {}", name);
    return name;
}

std::string DocumentPathFetcher::sanitizeForLog(std::string_view document) {
    if (urlParts(document)) return AccessibilityBrowserURLParser::sanitizeForLog(document);
    const std::string_view name = lastPathComponent(document);
    return name.empty() ? "<redacted>" : std::string(name);
}

}  // namespace quorvane
