#include "platform/linux/accessibility/BrowserWindowTitle.h"

#include <QString>

namespace quorvane::platform::BrowserWindowTitle {

bool isOfPage(std::string_view title, std::string_view pageTitle) {
    constexpr qsizetype enoughCharacters = 40;  // long titles are cut
    const auto page = QString::fromUtf8(pageTitle.data(), static_cast<qsizetype>(pageTitle.size())).simplified();
    const auto window = QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size())).simplified();
    return window.startsWith(page.left(enoughCharacters));
}

}  // namespace quorvane::platform::BrowserWindowTitle
