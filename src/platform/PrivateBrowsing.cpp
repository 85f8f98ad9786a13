#include "platform/PrivateBrowsing.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quorvane::platform::PrivateBrowsing {
namespace {

constexpr std::string_view gecko = "Gecko";
constexpr std::string_view chromium = "Chromium";

struct Product {
    std::string_view bundleIdentifier;
    std::string_view toolkit;
    std::string_view name;
};

constexpr std::string_view qt = "Qt";

/// A product without a name is in no title of its own: its private windows look like all others.
constexpr auto products = std::to_array<Product>({
    {"org.mozilla.firefox", gecko, "Firefox"},
    {"org.mozilla.firefox", gecko, "Developer Edition"},
    {"org.mozilla.firefox", gecko, "Nightly"},
    {"org.mozilla.firefox.beta", gecko, "Firefox"},
    {"org.mozilla.firefox.developer", gecko, "Developer Edition"},
    {"org.mozilla.firefox.nightly", gecko, "Nightly"},
    {"io.gitlab.librewolf-community", gecko, "LibreWolf"},
    {"app.zen_browser.zen", gecko, "Zen Browser"},
    {"app.zen_browser.zen", gecko, "Zen Twilight"},
    {"app.zen_browser.zen", gecko, "Zen"},
    {"net.waterfox.waterfox", gecko, "Waterfox"},
    {"one.ablaze.floorp", gecko, "Floorp"},
    {"com.google.Chrome", chromium, "Google Chrome"},
    {"com.google.Chrome", chromium, "Chromium"},
    {"com.google.Chrome.beta", chromium, "Google Chrome"},
    {"com.google.Chrome.dev", chromium, "Google Chrome"},
    {"com.google.Chrome.canary", chromium, "Google Chrome"},
    {"com.brave.Browser", chromium, "Brave"},
    {"com.brave.Browser.beta", chromium, "Brave"},
    {"com.brave.Browser.nightly", chromium, "Brave"},
    {"com.microsoft.edgemac", chromium, "Microsoft Edge"},
    {"com.microsoft.edgemac", chromium, "Microsoft\u200B Edge"},
    {"com.microsoft.edgemac.Beta", chromium, "Microsoft Edge"},
    {"com.microsoft.edgemac.Beta", chromium, "Microsoft\u200B Edge"},
    {"com.microsoft.edgemac.Dev", chromium, "Microsoft Edge"},
    {"com.microsoft.edgemac.Dev", chromium, "Microsoft\u200B Edge"},
    {"com.vivaldi.Vivaldi", chromium, "Vivaldi"},
    {"com.vivaldi.Vivaldi.snapshot", chromium, "Vivaldi"},
    {"com.operasoftware.Opera", chromium, "Opera"},
    {"com.operasoftware.Opera.beta", chromium, "Opera"},
    {"com.operasoftware.Opera.developer", chromium, "Opera"},
    {"org.kde.falkon", qt, "Falkon"},
    {"org.gnome.Epiphany", {}, {}},
    {"org.qutebrowser.qutebrowser", {}, {}},
});

/// Beside the product's name a title tells which of its channels it is.
constexpr std::array<std::string_view, 6> channels{" Beta", " beta", " Developer", " developer", " Dev", " Canary"};

constexpr std::array<std::string_view, 4> separators{" - ", " – ", " — ", ": "};

bool endsInSeparator(std::string_view text) {
    return std::any_of(separators.begin(), separators.end(), [&](auto one) { return text.ends_with(one); });
}

bool startsWithSeparator(std::string_view text) {
    return std::any_of(separators.begin(), separators.end(), [&](auto one) { return text.starts_with(one); });
}

/// The parts are joined in every language by the same dash, and the last one is the product's full name alone.
bool isOrdinaryOfGecko(std::string_view title, std::string_view product) {
    constexpr std::string_view dash = " — ";
    const auto end = title.rfind(dash);
    const auto last = end == std::string_view::npos ? title : title.substr(end + dash.size());
    for (const std::string_view maker : {"", "Mozilla ", "Firefox ", "Ablaze "})
        if (last.starts_with(maker) && last.substr(maker.size()) == product) return true;
    return false;
}

}  // namespace

bool isOrdinary(std::string_view title, std::string_view product, std::string_view toolkit) {
    if (product.empty() || title.find("[InPrivate]") != std::string_view::npos) return false;
    if (toolkit == gecko) return isOrdinaryOfGecko(title, product);
    const auto at = title.rfind(product);
    if (at == std::string_view::npos || (at != 0 && !endsInSeparator(title.substr(0, at)))) return false;
    auto profile = title.substr(at + product.size());  // its name is there when the user has several
    for (const std::string_view channel : channels)
        if (profile.starts_with(channel)) profile.remove_prefix(channel.size());
    if (profile.empty()) return true;
    return startsWithSeparator(profile) && profile.find_first_of("()") == std::string_view::npos &&
           profile.find("（") == std::string_view::npos;
}

bool isMarked(std::string_view bundleIdentifier, std::string_view title) {
    bool isNamed = false;
    for (const Product& product : products) {
        if (product.bundleIdentifier != bundleIdentifier || product.name.empty()) continue;
        if (isOrdinary(title, product.name, product.toolkit)) return false;
        isNamed = isNamed || title.find(product.name) != std::string_view::npos;
    }
    return isNamed;
}

bool hidesMark(std::string_view bundleIdentifier) {
    return std::any_of(products.begin(), products.end(), [&](const Product& product) {
        return product.bundleIdentifier == bundleIdentifier && (product.toolkit == chromium || product.name.empty());
    });
}

}  // namespace quorvane::platform::PrivateBrowsing
