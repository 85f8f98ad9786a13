#include "platform/linux/accessibility/AtspiAccessibility.h"

#include "base/Text.h"
#include "platform/linux/accessibility/AtspiDocuments.h"
#include "platform/linux/accessibility/AtspiFrontWindow.h"
#include "platform/linux/accessibility/AtspiRound.h"

#include <algorithm>
#include <array>
#include <unistd.h>
#include <utility>

namespace quorvane::platform {
namespace {

constexpr Seconds patience = 0.3s;
constexpr int longestText = 2000;  ///< characters

using Answer = std::optional<AccessibleValue>;
using Title = std::optional<std::string>;  ///< of the window in front, where it belongs to the element's application

AccessibleElement elementOf(const AtspiReference& reference) {
    return {(reference.bus + reference.path.path()).toStdString()};
}

std::optional<AtspiReference> referenceOf(const AccessibleElement& element) {
    const auto handle = QString::fromStdString(element.handle);
    const auto path = handle.indexOf('/');
    if (path < 0) return std::nullopt;
    AtspiReference reference{handle.left(path), QDBusObjectPath(handle.mid(path))};
    return reference.isNull() ? std::nullopt : std::optional(reference);
}

Answer elementAnswer(const std::optional<AtspiReference>& reference) {
    return reference ? Answer(elementOf(*reference)) : std::nullopt;
}

Answer elementsAnswer(const std::vector<AtspiReference>& references) {
    std::vector<AccessibleElement> elements;
    elements.reserve(references.size());
    for (const auto& reference : references)
        elements.push_back(elementOf(reference));
    return elements;
}

Answer textAnswer(std::optional<std::string> text, bool isUrl = false) {
    return text ? Answer(AccessibleText{std::move(*text), isUrl}) : std::nullopt;
}

/// Windows of an application that show; of anything else none. Of the application in front it is the one with the title
/// alone, as none of the others counts.
std::vector<AtspiReference> windows(AtspiRound& round, const AtspiReference& application, const Title& title) {
    if (!application.isApplication()) return {};
    if (title) {
        const auto window = AtspiFrontWindow::window(round, application, *title);
        return window ? std::vector{*window} : std::vector<AtspiReference>();
    }
    auto found = round.children(application);
    std::erase_if(found, [&](const AtspiReference& window) {
        return !round.hasState(window, AtspiState::showing) || !AtspiRole::isWindow(round.role(window).value_or(0));
    });
    return found;
}

std::optional<AtspiReference> focusedWindow(AtspiRound& round, const AtspiReference& application, const Title& title) {
    if (!application.isApplication()) return std::nullopt;
    if (title) return AtspiFrontWindow::window(round, application, *title);
    for (const auto& window : round.children(application))
        if (round.hasState(window, AtspiState::active)) return window;
    return std::nullopt;
}

std::optional<AtspiReference> focusedElement(AtspiRound& round, const AtspiReference& element, const Title& title) {
    const auto window = element.isApplication() ? focusedWindow(round, element, title) : element;
    if (!window) return std::nullopt;
    const auto found = round.matches(*window, AtspiMatchRule(AtspiState::focused, {}), 1);
    return found.empty() ? std::nullopt : std::optional(found.front());
}

std::optional<std::string> role(AtspiRound& round, const AtspiReference& element) {
    const auto role = round.role(element);
    if (!role) return std::nullopt;
    if (AtspiRole::isWindow(*role)) return std::string(AccessibleName::windowRole);
    if (*role == AtspiRole::documentWeb) return std::string(AccessibleName::webAreaRole);
    return round.roleName(element);
}

std::optional<std::string> value(AtspiRound& round, const AtspiReference& element) {
    const auto role = round.role(element);
    if (!role) return std::nullopt;
    if (*role == AtspiRole::text || *role == AtspiRole::entry) return round.text(element, longestText);
    const auto number = round.currentValue(element);
    return number ? std::optional(text::shortest(*number)) : std::nullopt;
}

struct Attribute {
    std::string_view name;
    Answer (*read)(AtspiRound&, const AtspiReference&, const Title&);
};

constexpr std::array<Attribute, 12> attributes{{
    {AccessibleName::focusedWindow,
     [](auto& round, auto& element, auto& title) { return elementAnswer(focusedWindow(round, element, title)); }},
    {AccessibleName::mainWindow,
     [](auto& round, auto& element, auto& title) {
         const auto all = windows(round, element, title);
         return all.empty() ? Answer() : elementAnswer(all.front());
     }},
    {AccessibleName::windows,
     [](auto& round, auto& element, auto& title) {
         const auto all = windows(round, element, title);
         return all.empty() ? Answer() : elementsAnswer(all);
     }},
    {AccessibleName::focusedElement,
     [](auto& round, auto& element, auto& title) { return elementAnswer(focusedElement(round, element, title)); }},
    {AccessibleName::role, [](auto& round, auto& element, auto&) { return textAnswer(role(round, element)); }},
    {AccessibleName::parent, [](auto& round, auto& element, auto&) { return elementAnswer(round.parent(element)); }},
    {AccessibleName::children,
     [](auto& round, auto& element, auto&) {
         const auto all = round.children(element);
         return all.empty() ? Answer() : elementsAnswer(all);
     }},
    {AccessibleName::url,
     [](auto& round, auto& element, auto&) { return textAnswer(AtspiDocuments::pageUrl(round, element), true); }},
    {AccessibleName::document,
     [](auto& round, auto& element, auto&) { return textAnswer(AtspiDocuments::documentUrl(round, element)); }},
    {AccessibleName::value, [](auto& round, auto& element, auto&) { return textAnswer(value(round, element)); }},
    {AccessibleName::title, [](auto& round, auto& element, auto&) { return textAnswer(round.name(element)); }},
    {AccessibleName::description,
     [](auto& round, auto& element, auto&) { return textAnswer(round.description(element)); }},
}};

}  // namespace

bool AtspiAccessibility::isProcessTrusted() {
    return bus_.isEnabled(Deadline(patience));
}

bool AtspiAccessibility::requestTrust() {
    return bus_.enable(Deadline(patience));
}

std::optional<AccessibleElement> AtspiAccessibility::application(std::int64_t processIdentifier) {
    if (processIdentifier == getpid()) return std::nullopt;
    const Deadline deadline(patience);
    const auto front = processIdentifier == 0 ? frontWindow() : std::nullopt;
    if (processIdentifier == 0 && (!front || front->processIdentifier != 0)) return std::nullopt;
    auto connection = bus_.connection(deadline);
    if (!connection) return std::nullopt;
    AtspiRound round(std::move(connection), deadline);
    const auto found = front ? AtspiFrontWindow::application(round, *front) : round.application(processIdentifier);
    return found ? std::optional(elementOf(*found)) : std::nullopt;
}

std::optional<AccessibleValue> AtspiAccessibility::attribute(const AccessibleElement& element, std::string_view name) {
    const auto reference = referenceOf(element);
    if (!reference) return std::nullopt;
    const auto* known = std::ranges::find(attributes, name, &Attribute::name);
    if (known == attributes.end()) return std::nullopt;
    const Deadline deadline(patience);
    const auto front = reference->isApplication() ? frontWindow() : std::nullopt;
    auto connection = bus_.connection(deadline);
    if (!connection) return std::nullopt;
    AtspiRound round(std::move(connection), deadline);
    Title title;
    if (front && !front->title.empty() && AtspiFrontWindow::isOf(round, *reference, *front)) title = front->title;
    return known->read(round, *reference, title);
}

void AtspiAccessibility::setFront(Front front) {
    auto shared = front ? std::make_shared<const Front>(std::move(front)) : nullptr;
    const std::lock_guard lock(mutex_);
    front_ = std::move(shared);
}

std::optional<FrontWindow> AtspiAccessibility::frontWindow() {
    std::unique_lock lock(mutex_);
    const auto front = front_;
    lock.unlock();
    return front ? (*front)() : std::nullopt;
}

Channel AtspiAccessibility::channel() {
    auto problem = bus_.problem(Deadline(patience));
    const bool isAvailable = problem.reason.empty();
    return {.question = "accessibility tree",
            .name = "AT-SPI",
            .isAvailable = isAvailable,
            .reason = std::move(problem.reason),
            .remedy = std::move(problem.remedy)};
}

}  // namespace quorvane::platform
