#pragma once

#include <optional>
#include <string>

namespace quorvane {

/// Finds out which page the front browser shows. Called from worker threads, one call at a time.
class BrowserURLSource {
public:
    virtual ~BrowserURLSource() = default;
    [[nodiscard]] virtual std::optional<std::string> frontURL() = 0;
};

}  // namespace quorvane
