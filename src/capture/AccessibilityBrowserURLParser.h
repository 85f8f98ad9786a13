#pragma once

#include "capture/SearchBudget.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/Accessibility.h"
#include "platform/RunningApplications.h"

#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <utility>

namespace quorvane {

/// Reads the URL that a browser shows out of its accessibility tree: from the window, from the page in it, or from the
/// window's title. From any thread; a call asks the tree many questions, within a `SearchBudget`.
class AccessibilityBrowserURLParser {
public:
    /// Once `stop` is requested a search ends without an answer.
    AccessibilityBrowserURLParser(platform::Accessibility& accessibility, platform::RunningApplications& applications,
                                  ConsoleSink& console, std::stop_token stop = {})
        : accessibility_(accessibility), applications_(applications), console_(console), stop_(std::move(stop)) {}

    /// The URL in the focused window of `application`, by default the one in front, if that has this bundle id.
    /// Not empty.
    [[nodiscard]] std::optional<std::string>
    getURL(const std::string& bundleId, const std::optional<platform::RunningApplication>& application = {});

    /// The outline of a URL that a log may show: scheme, host and whether there is a path. "<redacted>" for what is no
    /// URL.
    [[nodiscard]] static std::string sanitizeForLog(std::string_view url);

    /// The text without blanks around it, and with a scheme if it only begins with "www."; none if nothing is left.
    [[nodiscard]] static std::optional<std::string> normalized(std::string_view url);

private:
    [[nodiscard]] std::optional<std::string> attributeURL(const platform::AccessibleElement& element);
    [[nodiscard]] std::optional<platform::AccessibleElement> webArea(const platform::AccessibleElement& element,
                                                                     SearchBudget& budget, int depth = 0);
    [[nodiscard]] std::optional<std::string> titleURL(const std::string& title);

    platform::Accessibility& accessibility_;
    platform::RunningApplications& applications_;
    ConsoleSink& console_;
    std::stop_token stop_;
};

}  // namespace quorvane
