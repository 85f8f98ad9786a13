#pragma once

#include <optional>
#include <string>

namespace quorvane::platform {

/// The icons that the desktop's menus show for applications.
class ApplicationIcons {
public:
    virtual ~ApplicationIcons() = default;

    /// A name in the icon theme, or the path of a picture; none if no installed application has the bundle identifier.
    [[nodiscard]] virtual std::optional<std::string> icon(const std::string& bundleIdentifier) const = 0;
};

}  // namespace quorvane::platform
