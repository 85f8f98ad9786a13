#pragma once

#include <optional>
#include <string>

namespace quorvane {

/// What is open in the front window of an application.
struct WindowInfo {
    std::optional<std::string> title;
    std::optional<std::string> document;  ///< path of the document
    /// The title is kept back until it is known that the window is none of private browsing; asked again then, it may
    /// be there.
    bool isTitleHeldBack = false;
    friend bool operator==(const WindowInfo&, const WindowInfo&) = default;
};

/// Finds out window and document of an application in front. A call may take time; it is made on the main thread.
class WindowInfoSource {
public:
    virtual ~WindowInfoSource() = default;
    [[nodiscard]] virtual WindowInfo windowInfo(const std::string& bundleId) = 0;
};

}  // namespace quorvane
