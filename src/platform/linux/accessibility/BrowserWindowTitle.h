#pragma once

#include <string_view>

/// What the title of a browser's window, as accessibility knows it, says of its pages.
namespace quorvane::platform::BrowserWindowTitle {

/// Does the window show the page with this title? A page without a title may be the one.
[[nodiscard]] bool isOfPage(std::string_view title, std::string_view pageTitle);

}  // namespace quorvane::platform::BrowserWindowTitle
