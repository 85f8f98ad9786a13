#include "platform/linux/accessibility/AtspiFrontWindow.h"

#include "base/Text.h"

#include <QString>
#include <algorithm>

namespace quorvane::platform::AtspiFrontWindow {
namespace {

struct Windows {
    std::vector<AtspiReference> all;
    std::vector<AtspiReference> named;  ///< with the title
    std::optional<AtspiReference> active;
    std::optional<AtspiReference> activeNamed;
};

/// To assistive technology browsers add to a title what stands in no other: the profile, private browsing.
bool isCalled(const std::string& name, const std::string& title) {
    const auto wanted = QString::fromStdString(title).simplified();
    return !wanted.isEmpty() && QString::fromStdString(name).simplified().startsWith(wanted);
}

Windows windowsOf(AtspiRound& round, const AtspiReference& application, const std::string& title) {
    Windows windows;
    for (const auto& window : round.children(application)) {
        if (!round.hasState(window, AtspiState::showing) || !AtspiRole::isWindow(round.role(window).value_or(0)))
            continue;
        const bool isActive = round.hasState(window, AtspiState::active);
        windows.all.push_back(window);
        if (isActive) windows.active = window;
        if (!isCalled(round.name(window).value_or(""), title)) continue;
        windows.named.push_back(window);
        if (isActive) windows.activeNamed = window;
    }
    return windows;
}

std::optional<AtspiReference> onlyOne(const std::vector<AtspiReference>& windows) {
    return windows.size() == 1 ? std::optional(windows.front()) : std::nullopt;
}

/// "firefox" is also "firefox esr".
bool bearsNameOf(AtspiRound& round, const AtspiReference& application, const FrontWindow& front) {
    const auto name = text::lowercased(round.name(application).value_or(""));
    return !name.empty() && std::any_of(front.names.begin(), front.names.end(), [&](const std::string& one) {
        return one == name || one.starts_with(name + " ");
    });
}

}  // namespace

bool isOf(AtspiRound& round, const AtspiReference& application, const FrontWindow& front) {
    return front.processIdentifier > 0 ? round.process(application) == front.processIdentifier
                                       : bearsNameOf(round, application, front);
}

std::optional<AtspiReference> application(AtspiRound& round, const FrontWindow& front) {
    std::optional<AtspiReference> found;
    for (const auto& application : round.applications()) {
        if (!bearsNameOf(round, application, front) || windowsOf(round, application, front.title).named.empty())
            continue;
        if (found) return std::nullopt;
        found = application;
    }
    return found;
}

std::optional<AtspiReference> window(AtspiRound& round, const AtspiReference& application, const std::string& title) {
    const auto windows = windowsOf(round, application, title);
    if (windows.activeNamed) return windows.activeNamed;
    if (!windows.named.empty()) return onlyOne(windows.named);
    return windows.active ? windows.active : onlyOne(windows.all);
}

}  // namespace quorvane::platform::AtspiFrontWindow
