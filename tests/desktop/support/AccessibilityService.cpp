#include "desktop/support/AccessibilityService.h"

#include "desktop/support/Waiting.h"
#include "platform/linux/bus/BoundedBusConnection.h"

#include <stdexcept>

namespace quorvane {

using platform::Accessibility;
using platform::AccessibleElement;
namespace AccessibleName = platform::AccessibleName;

AccessibilityService::AccessibilityService(DesktopSession& session) {
    // The settings' own service is not there, and a switch that cannot be stored would fall back.
    session.environment().set("GSETTINGS_BACKEND", "memory");
    restart();
}

void AccessibilityService::restart() {
    launcher_.reset();
    launcher_ = std::make_unique<ChildProcess>(std::vector<std::string>{"/usr/libexec/at-spi-bus-launcher"});
    if (!waitUntil([&] { return !address().isEmpty(); }, 10s)) throw std::runtime_error("no accessibility bus");
}

QString AccessibilityService::address() const {
    const platform::Deadline deadline(1s);
    const platform::BoundedBusConnection session(platform::BoundedBusConnection::sessionAddress(), deadline);
    const auto question =
        QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                       QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"));
    const auto answer = session.call(question, deadline);
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0).toString() : QString();
}

std::optional<AccessibleElement> elementAt(Accessibility& accessibility,
                                           const std::optional<AccessibleElement>& element, std::string_view name) {
    const auto value = element ? accessibility.attribute(*element, name) : std::nullopt;
    const auto* found = value ? std::get_if<AccessibleElement>(&*value) : nullptr;
    return found ? std::optional(*found) : std::nullopt;
}

std::optional<std::string> textAt(Accessibility& accessibility, const std::optional<AccessibleElement>& element,
                                  std::string_view name) {
    const auto value = element ? accessibility.attribute(*element, name) : std::nullopt;
    const auto* found = value ? std::get_if<platform::AccessibleText>(&*value) : nullptr;
    return found ? std::optional(found->text) : std::nullopt;
}

std::vector<AccessibleElement> elementsAt(Accessibility& accessibility, const std::optional<AccessibleElement>& element,
                                          std::string_view name) {
    const auto value = element ? accessibility.attribute(*element, name) : std::nullopt;
    const auto* found = value ? std::get_if<std::vector<AccessibleElement>>(&*value) : nullptr;
    return found ? *found : std::vector<AccessibleElement>();
}

std::optional<AccessibleElement> descendantWithRole(Accessibility& accessibility, const AccessibleElement& element,
                                                    std::string_view role) {
    if (textAt(accessibility, element, AccessibleName::role) == role) return element;
    for (const auto& child : elementsAt(accessibility, element, AccessibleName::children))
        if (auto found = descendantWithRole(accessibility, child, role)) return found;
    return std::nullopt;
}

}  // namespace quorvane
