#pragma once

#include "platform/Channel.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quorvane::platform {

/// A part of an application's interface: a window, a button, a page. What the text means, the channel alone knows.
struct AccessibleElement {
    std::string handle;
    friend bool operator==(const AccessibleElement&, const AccessibleElement&) = default;
};

/// A text, marked where it is a URL; one element; or several.
struct AccessibleText {
    std::string text;
    bool isUrl = false;
    friend bool operator==(const AccessibleText&, const AccessibleText&) = default;
};
using AccessibleValue = std::variant<AccessibleText, AccessibleElement, std::vector<AccessibleElement>>;

/// Names of attributes and roles, as the product knows them.
namespace AccessibleName {
inline constexpr std::string_view focusedWindow = "AXFocusedWindow";
inline constexpr std::string_view mainWindow = "AXMainWindow";
inline constexpr std::string_view windows = "AXWindows";
inline constexpr std::string_view focusedElement = "AXFocusedUIElement";
inline constexpr std::string_view role = "AXRole";
inline constexpr std::string_view parent = "AXParent";
inline constexpr std::string_view children = "AXChildren";
inline constexpr std::string_view url = "AXURL";
inline constexpr std::string_view document = "AXDocument";
inline constexpr std::string_view value = "AXValue";
inline constexpr std::string_view title = "AXTitle";
inline constexpr std::string_view description = "AXDescription";
inline constexpr std::string_view windowRole = "AXWindow";
inline constexpr std::string_view webAreaRole = "AXWebArea";
}  // namespace AccessibleName

/// The tree of what applications show, for programs that read screens. From any thread. Every call comes back within
/// 300 ms. An application that did not answer once is not asked again for 2 s, so that a frozen one costs one wait.
class Accessibility {
public:
    virtual ~Accessibility() = default;

    /// May this process ask at all?
    [[nodiscard]] virtual bool isProcessTrusted() = 0;

    /// The same, and asks the user or switches it on where that is possible.
    virtual bool requestTrust() = 0;

    /// The application with this process; none if it isn't there for accessibility.
    [[nodiscard]] virtual std::optional<AccessibleElement> application(std::int64_t processIdentifier) = 0;

    /// An attribute by its name of `AccessibleName`; none if there is none, or nobody answers.
    [[nodiscard]] virtual std::optional<AccessibleValue> attribute(const AccessibleElement& element,
                                                                   std::string_view name) = 0;

    [[nodiscard]] virtual Channel channel() = 0;
};

}  // namespace quorvane::platform
