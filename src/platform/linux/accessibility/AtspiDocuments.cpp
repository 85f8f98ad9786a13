#include "platform/linux/accessibility/AtspiDocuments.h"

#include "platform/PrivateBrowsing.h"
#include "platform/linux/accessibility/BrowserWindowTitle.h"

namespace quorvane::platform::AtspiDocuments {
namespace {

constexpr int deepestPage = 20;  ///< steps from a page up to its window
constexpr int severalPages = 3;  ///< side bars and the two halves of a split window are pages too

/// Firefox says DocURL, Chromium URI.
std::optional<std::string> address(AtspiRound& round, const AtspiReference& document) {
    auto url = round.documentAttribute(document, "DocURL");
    return url ? url : round.documentAttribute(document, "URI");
}

/// The window's title; none where it may be one of private browsing.
std::optional<std::string> ordinaryTitle(AtspiRound& round, const AtspiReference& window) {
    const auto application = AtspiReference{window.bus, QDBusObjectPath(AtspiReference::applicationPath())};
    const auto title = round.name(window);
    if (!title) return std::nullopt;
    const auto product = round.name(application);
    if (!product) return std::nullopt;
    const auto toolkit = round.toolkit(application);
    return toolkit && PrivateBrowsing::isOrdinary(*title, *product, *toolkit) ? title : std::nullopt;
}

/// For a moment after a change of tabs a browser shows the old page under the new title.
bool isShown(AtspiRound& round, const AtspiReference& page, const std::string& windowTitle) {
    const auto pageTitle = round.name(page);
    return pageTitle && BrowserWindowTitle::isOfPage(windowTitle, *pageTitle);
}

std::optional<std::string> urlOfWindow(AtspiRound& round, const AtspiReference& window) {
    const AtspiMatchRule shownPages(AtspiState::showing, {AtspiRole::documentWeb});
    // The first one alone is cheap: the search for more goes through the whole page.
    auto pages = round.matches(window, shownPages, 1);
    if (pages.empty()) return std::nullopt;
    const auto title = ordinaryTitle(round, window);
    if (!title) return std::nullopt;
    if (!isShown(round, pages.front(), *title)) {
        pages = round.matches(window, shownPages, severalPages);
        std::erase_if(pages, [&](const AtspiReference& page) { return !isShown(round, page, *title); });
    }
    return pages.empty() ? std::nullopt : address(round, pages.front());
}

std::optional<std::string> urlOfPage(AtspiRound& round, const AtspiReference& page) {
    if (!round.hasState(page, AtspiState::showing)) return std::nullopt;
    auto above = round.parent(page);
    for (int steps = 1; above && steps < deepestPage; ++steps) {
        const auto role = round.role(*above);
        if (!role) return std::nullopt;
        if (AtspiRole::isWindow(*role)) {
            const auto title = ordinaryTitle(round, *above);
            return title && isShown(round, page, *title) ? address(round, page) : std::nullopt;
        }
        above = round.parent(*above);
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::string> pageUrl(AtspiRound& round, const AtspiReference& windowOrPage) {
    const auto role = round.role(windowOrPage);
    if (!role) return std::nullopt;
    if (AtspiRole::isWindow(*role)) return urlOfWindow(round, windowOrPage);
    return *role == AtspiRole::documentWeb ? urlOfPage(round, windowOrPage) : std::nullopt;
}

std::optional<std::string> documentUrl(AtspiRound& round, const AtspiReference& window) {
    const auto role = round.role(window);
    if (!role || !AtspiRole::isWindow(*role)) return std::nullopt;
    const AtspiMatchRule shownDocuments(AtspiState::showing, {AtspiRole::documentFrame, AtspiRole::documentSpreadsheet,
                                                              AtspiRole::documentPresentation, AtspiRole::documentText,
                                                              AtspiRole::documentWeb});
    const auto documents = round.matches(window, shownDocuments, 1);
    if (documents.empty()) return std::nullopt;
    const auto kind = round.role(documents.front());
    if (!kind) return std::nullopt;
    return *kind == AtspiRole::documentWeb ? urlOfWindow(round, window) : address(round, documents.front());
}

}  // namespace quorvane::platform::AtspiDocuments
