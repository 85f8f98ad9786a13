#include "platform/linux/BrowserWindowTitle.h"

#include <QString>
#include <array>
#include <string>

namespace quorvane::platform::BrowserWindowTitle {
namespace {

constexpr std::array<std::string_view, 4> separators{" - ", " – ", " — ", ": "};

bool endsInSeparator(std::string_view text) {
    for (const auto separator : separators)
        if (text.ends_with(separator)) return true;
    return false;
}

bool startsWithSeparator(std::string_view text) {
    for (const auto separator : separators)
        if (text.starts_with(separator)) return true;
    return false;
}

/// The parts are joined in every language by the same dash, and the last one is the product's full name alone.
bool isOrdinaryOfGecko(std::string_view title, std::string_view product) {
    constexpr std::string_view dash = " — ";
    const auto end = title.rfind(dash);
    const auto last = end == std::string_view::npos ? title : title.substr(end + dash.size());
    for (const std::string_view maker : {"", "Mozilla ", "Firefox "})
        if (last.starts_with(maker) && last.substr(maker.size()) == product) return true;
    return false;
}

}  // namespace

bool isOrdinary(std::string_view title, std::string_view product, std::string_view toolkit) {
    if (product.empty() || title.find("[InPrivate]") != std::string_view::npos) return false;
    if (toolkit == "Gecko") return isOrdinaryOfGecko(title, product);
    const auto at = title.rfind(product);
    if (at == std::string_view::npos || (at != 0 && !endsInSeparator(title.substr(0, at)))) return false;
    const auto profile = title.substr(at + product.size());  // its name is there when the user has several
    if (profile.empty()) return true;
    return startsWithSeparator(profile) && profile.find_first_of("()") == std::string_view::npos &&
           profile.find("（") == std::string_view::npos;
}

bool isOfPage(std::string_view title, std::string_view pageTitle) {
    constexpr qsizetype enoughCharacters = 40;  // long titles are cut
    const auto page = QString::fromUtf8(pageTitle.data(), static_cast<qsizetype>(pageTitle.size())).simplified();
    const auto window = QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size())).simplified();
    return window.startsWith(page.left(enoughCharacters));
}

}  // namespace quorvane::platform::BrowserWindowTitle
