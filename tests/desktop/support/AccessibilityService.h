#pragma once

#include "desktop/support/ChildProcess.h"
#include "desktop/support/DesktopSession.h"
#include "platform/Accessibility.h"

#include <QString>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

/// The accessibility bus of the test's session, as at-spi2-core brings it, with accessibility switched off.
class AccessibilityService {
public:
    explicit AccessibilityService(DesktopSession& session);

    void restart();

    /// The bus's address.
    [[nodiscard]] QString address() const;

private:
    std::unique_ptr<ChildProcess> launcher_;
};

/// Of an attribute of an element that may be none.
std::optional<platform::AccessibleElement> elementAt(platform::Accessibility& accessibility,
                                                     const std::optional<platform::AccessibleElement>& element,
                                                     std::string_view name);
std::optional<std::string> textAt(platform::Accessibility& accessibility,
                                  const std::optional<platform::AccessibleElement>& element, std::string_view name);
std::vector<platform::AccessibleElement> elementsAt(platform::Accessibility& accessibility,
                                                    const std::optional<platform::AccessibleElement>& element,
                                                    std::string_view name);

/// The first element at or below `element` with this role, found by walking.
std::optional<platform::AccessibleElement> descendantWithRole(platform::Accessibility& accessibility,
                                                              const platform::AccessibleElement& element,
                                                              std::string_view role);

}  // namespace quorvane
