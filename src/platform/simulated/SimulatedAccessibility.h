#pragma once

#include "platform/Accessibility.h"

#include <map>
#include <vector>

namespace quorvane::platform {

/// A tree that a test builds. Handles are the names that it gives.
class SimulatedAccessibility : public Accessibility {
public:
    [[nodiscard]] bool isProcessTrusted() override { return isTrusted_; }
    bool requestTrust() override;
    [[nodiscard]] std::optional<AccessibleElement> application(std::int64_t processIdentifier) override;
    [[nodiscard]] std::optional<AccessibleValue> attribute(const AccessibleElement& element,
                                                           std::string_view name) override;
    [[nodiscard]] Channel channel() override;

    void setTrusted(bool trusted) { isTrusted_ = trusted; }
    void setApplication(std::int64_t processIdentifier, const std::string& handle);
    void setText(const std::string& handle, std::string_view name, std::string text, bool isUrl = false);
    void setElement(const std::string& handle, std::string_view name, const std::string& target);
    void setElements(const std::string& handle, std::string_view name, const std::vector<std::string>& targets);
    /// Gives it children and makes it their parent.
    void setChildren(const std::string& handle, const std::vector<std::string>& children);

    /// What was asked, in order: "handle name".
    [[nodiscard]] const std::vector<std::string>& asked() const { return asked_; }
    [[nodiscard]] int trustRequests() const { return trustRequests_; }

private:
    bool isTrusted_ = true;
    int trustRequests_ = 0;
    std::map<std::int64_t, AccessibleElement> applications_;
    std::map<std::string, std::map<std::string, AccessibleValue, std::less<>>> attributes_;
    std::vector<std::string> asked_;
};

}  // namespace quorvane::platform
