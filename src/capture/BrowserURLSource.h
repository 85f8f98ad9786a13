#pragma once

#include <optional>
#include <string>

namespace quorvane {

/// Finds out which page the front browser shows. Called from worker threads, one call at a time, but
/// for `toldURL`.
class BrowserURLSource {
public:
    virtual ~BrowserURLSource() = default;
    [[nodiscard]] virtual std::optional<std::string> frontURL() = 0;

    /// The page that the front browser has told by itself and shows now; asks nobody and comes back at once. On the
    /// main thread.
    [[nodiscard]] virtual std::optional<std::string> toldURL() { return std::nullopt; }
};

}  // namespace quorvane
