#pragma once

#include "capture/WindowInfo.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/Accessibility.h"
#include "platform/Automation.h"
#include "platform/RunningApplications.h"

#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <utility>

namespace quorvane {

/// Finds out on what the user works in the front application: first what its windows tell, then what a script gets.
/// From any thread; it keeps no state. Blocks for as long as the application does, within the bounds of the channels.
class DocumentPathFetcher final : public WindowInfoSource {
public:
    /// What the front window of an application tells. Of the texts, each may be missing or empty.
    struct AccessibilityInfo {
        std::optional<std::string> title;
        std::optional<std::string> document;
        std::optional<std::string> chatTitle;  ///< of the conversation, in a chat application
        friend bool operator==(const AccessibilityInfo&, const AccessibilityInfo&) = default;
    };

    DocumentPathFetcher(platform::Accessibility& accessibility, platform::RunningApplications& applications,
                        platform::Automation& automation, ConsoleSink& console, std::stop_token stop = {})
        : accessibility_(accessibility), applications_(applications), automation_(automation), console_(console),
          stop_(std::move(stop)) {}

    [[nodiscard]] WindowInfo windowInfo(const std::string& bundleId) override { return getDocumentInfo(bundleId); }

    /// Title and document of the application, or neither if another one is in front by now, or a browser's window of
    /// private browsing. The document is a path, a name or, where nothing better is known, a title.
    [[nodiscard]] WindowInfo getDocumentInfo(const std::string& bundleId);

    /// What the application's script says, else `getFallbackInfo`. None for an application that has no script.
    [[nodiscard]] std::optional<std::string> getDocumentPathByScript(const std::string& bundleId);

    /// The window's document, its title or the application's name; none if the application isn't in front.
    [[nodiscard]] std::optional<std::string> getFallbackInfo(const std::string& bundleId);

    [[nodiscard]] AccessibilityInfo readAccessibilityInfo(const platform::RunningApplication& application,
                                                          const std::string& bundleId);

    /// What a log may show of a document: the last part of a path, or scheme and host of a URL.
    [[nodiscard]] static std::string sanitizeForLog(std::string_view document);

private:
    void report(const platform::ScriptError& error);

    platform::Accessibility& accessibility_;
    platform::RunningApplications& applications_;
    platform::Automation& automation_;
    ConsoleSink& console_;
    std::stop_token stop_;  ///< ends searches
};

}  // namespace quorvane
