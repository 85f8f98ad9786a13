#pragma once

#include <string_view>

/// What the title of a browser's window gives away about private browsing.
namespace quorvane::platform::PrivateBrowsing {

/// Is it surely no window of private browsing? A private window's mark is written in the user's language, so what
/// counts is that there is none: the product's name ends the title, and nothing stands between it and the page's title.
///
///     Page — Mozilla Firefox                            Page - Chromium, Page - Chromium - Profile
///     Page — Mozilla Firefox Private Browsing           Page - Chromium (Incognito)
///     Page — Navigation privée de Mozilla Firefox       Page – Chromium (Navigation privée)
///
/// `product` and `toolkit` are what the application calls itself and its toolkit: "Firefox" and "Gecko".
[[nodiscard]] bool isOrdinary(std::string_view title, std::string_view product, std::string_view toolkit);

/// Does a window of the application with this title say that it is one of private browsing? A title that names no
/// product, as that of a dialog, says nothing.
[[nodiscard]] bool isMarked(std::string_view bundleIdentifier, std::string_view title);

/// Is it an application whose private windows bear the same titles as its others? Those of Chromium's family mark them
/// for accessibility alone, and some others not at all.
[[nodiscard]] bool hidesMark(std::string_view bundleIdentifier);

}  // namespace quorvane::platform::PrivateBrowsing
