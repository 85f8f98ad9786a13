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

constexpr auto products = std::to_array<Product>({
    {"org.mozilla.firefox", gecko, "Firefox"},
    {"org.mozilla.firefox", gecko, "Developer Edition"},
    {"org.mozilla.firefox", gecko, "Nightly"},
    {"com.google.Chrome", chromium, "Google Chrome"},
    {"com.google.Chrome", chromium, "Chromium"},
    {"com.google.Chrome.canary", chromium, "Google Chrome"},
    {"com.brave.Browser", chromium, "Brave"},
    {"com.microsoft.edgemac", chromium, "Microsoft Edge"},
    {"com.microsoft.edgemac", chromium, "Microsoft\u200B Edge"},
    {"com.vivaldi.Vivaldi", chromium, "Vivaldi"},
    {"com.operasoftware.Opera", chromium, "Opera"},
});

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
    for (const std::string_view maker : {"", "Mozilla ", "Firefox "})
        if (last.starts_with(maker) && last.substr(maker.size()) == product) return true;
    return false;
}

}  // namespace

bool isOrdinary(std::string_view title, std::string_view product, std::string_view toolkit) {
    if (product.empty() || title.find("[InPrivate]") != std::string_view::npos) return false;
    if (toolkit == gecko) return isOrdinaryOfGecko(title, product);
    const auto at = title.rfind(product);
    if (at == std::string_view::npos || (at != 0 && !endsInSeparator(title.substr(0, at)))) return false;
    const auto profile = title.substr(at + product.size());  // its name is there when the user has several
    if (profile.empty()) return true;
    return startsWithSeparator(profile) && profile.find_first_of("()") == std::string_view::npos &&
           profile.find("（") == std::string_view::npos;
}

bool isMarked(std::string_view bundleIdentifier, std::string_view title) {
    bool isNamed = false;
    for (const Product& product : products) {
        if (product.bundleIdentifier != bundleIdentifier) continue;
        if (isOrdinary(title, product.name, product.toolkit)) return false;
        isNamed = isNamed || title.find(product.name) != std::string_view::npos;
    }
    return isNamed;
}

bool hidesMark(std::string_view bundleIdentifier) {
    return std::any_of(products.begin(), products.end(), [&](const Product& product) {
        return product.bundleIdentifier == bundleIdentifier && product.toolkit == chromium;
    });
}

}  // namespace quorvane::platform::PrivateBrowsing
