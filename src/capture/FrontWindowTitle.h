#pragma once

#include "capture/WindowInfo.h"
#include "platform/ForegroundSource.h"

namespace quorvane {

/// The plainest source of window data: the title of the front window, and no document.
class FrontWindowTitle final : public WindowInfoSource {
public:
    explicit FrontWindowTitle(platform::ForegroundSource& foreground) : foreground_(foreground) {}
    [[nodiscard]] WindowInfo windowInfo(const std::string& bundleId) override;

private:
    platform::ForegroundSource& foreground_;
};

}  // namespace quorvane
