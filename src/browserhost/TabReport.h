#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

/// What a browser says of the page in front.
struct TabReport {
    static constexpr std::size_t longestUrl = 8192;    ///< bytes; what is longer is cut
    static constexpr std::size_t longestTitle = 1024;  ///< bytes

    std::string url;
    std::string title;       ///< empty until the browser knows it
    bool isPrivate = false;  ///< there is no page of which it may speak; url and title are empty
    friend bool operator==(const TabReport&, const TabReport&) = default;
};

/// What the extension says: {"v":1,"url":"...","title":"..."} or {"v":1,"private":true}. Other keys are passed over. On
/// failure none, and `problem` (if given) says why in one line.
[[nodiscard]] std::optional<TabReport> parseTabReport(std::string_view message, std::string* problem = nullptr);

/// A report on its way from the host to the tracker, with the browser's process.
struct BrowserMessage {
    /// Bytes that `text` needs at most: each byte may take six, and the names of the keys some.
    static constexpr std::size_t longest = 6 * (TabReport::longestUrl + TabReport::longestTitle) + 1024;

    std::int64_t browser = 0;  ///< process id, > 0
    TabReport page;
    friend bool operator==(const BrowserMessage&, const BrowserMessage&) = default;

    [[nodiscard]] std::string text() const;
};

[[nodiscard]] std::optional<BrowserMessage> parseBrowserMessage(std::string_view text);

}  // namespace quorvane
