#include "platform/simulated/SimulatedAccessibility.h"

namespace quorvane::platform {

bool SimulatedAccessibility::requestTrust() {
    ++trustRequests_;
    return isTrusted_;
}

std::optional<AccessibleElement> SimulatedAccessibility::application(std::int64_t processIdentifier) {
    const auto found = applications_.find(processIdentifier);
    return found == applications_.end() ? std::nullopt : std::optional(found->second);
}

std::optional<AccessibleValue> SimulatedAccessibility::attribute(const AccessibleElement& element,
                                                                 std::string_view name) {
    asked_.push_back(element.handle + " " + std::string(name));
    const auto attributes = attributes_.find(element.handle);
    if (attributes == attributes_.end()) return std::nullopt;
    const auto value = attributes->second.find(name);
    return value == attributes->second.end() ? std::nullopt : std::optional(value->second);
}

Channel SimulatedAccessibility::channel() {
    return {.question = "accessibility", .name = "simulated", .isAvailable = isTrusted_};
}

void SimulatedAccessibility::setApplication(std::int64_t processIdentifier, const std::string& handle) {
    applications_.insert_or_assign(processIdentifier, AccessibleElement{handle});
}

void SimulatedAccessibility::setText(const std::string& handle, std::string_view name, std::string text, bool isUrl) {
    attributes_[handle].insert_or_assign(std::string(name), AccessibleText{std::move(text), isUrl});
}

void SimulatedAccessibility::setElement(const std::string& handle, std::string_view name, const std::string& target) {
    attributes_[handle].insert_or_assign(std::string(name), AccessibleElement{target});
}

void SimulatedAccessibility::setElements(const std::string& handle, std::string_view name,
                                         const std::vector<std::string>& targets) {
    std::vector<AccessibleElement> elements;
    elements.reserve(targets.size());
    for (const std::string& target : targets)
        elements.push_back({target});
    attributes_[handle].insert_or_assign(std::string(name), std::move(elements));
}

void SimulatedAccessibility::setChildren(const std::string& handle, const std::vector<std::string>& children) {
    setElements(handle, AccessibleName::children, children);
    for (const std::string& child : children)
        setElement(child, AccessibleName::parent, handle);
}

}  // namespace quorvane::platform
