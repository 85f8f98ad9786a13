#pragma once

#include <string_view>

/// What the title of a browser's window, as accessibility knows it, gives away.
namespace quorvane::platform::BrowserWindowTitle {

/// Is it surely no window of private browsing? A private window's mark is written in the user's language, so what
/// counts is that there is none: the product's name ends the title, and nothing stands between it and the page's title.
///
///     Page — Mozilla Firefox                            Page - Chromium, Page - Chromium - Profile
///     Page — Mozilla Firefox Private Browsing           Page - Chromium (Incognito)
///     Page — Navigation privée de Mozilla Firefox       Page – Chromium (Navigation privée)
///
/// `product` and `toolkit` are what the application calls itself and its toolkit: "Firefox" and "Gecko".
[[nodiscard]] bool isOrdinary(std::string_view title, std::string_view product, std::string_view toolkit);

/// Does the window show the page with this title? A page without a title may be the one.
[[nodiscard]] bool isOfPage(std::string_view title, std::string_view pageTitle);

}  // namespace quorvane::platform::BrowserWindowTitle
