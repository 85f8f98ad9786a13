#pragma once

#include <optional>
#include <string>

namespace quorvane {

/// What is open in the front window of an application.
struct WindowInfo {
    std::optional<std::string> title;
    std::optional<std::string> document;  ///< path of the document
    friend bool operator==(const WindowInfo&, const WindowInfo&) = default;
};

/// Finds out window and document of an application in front. A call may take time; it is made on a worker.
class WindowInfoSource {
public:
    virtual ~WindowInfoSource() = default;
    [[nodiscard]] virtual WindowInfo windowInfo(const std::string& bundleId) = 0;
};

}  // namespace quorvane
