#pragma once

#include "updates/ReleaseVersion.h"

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

/// A feed that nothing may be offered from; `what()` says why, in one line.
class AppcastError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A version that a feed tells of.
struct AppcastItem {
    ReleaseVersion version{};
    std::string link{};   ///< where people get it, as it stands there; empty: nowhere
    std::string notes{};  ///< what is new, as text or HTML
    friend bool operator==(const AppcastItem&, const AppcastItem&) = default;
};

/// Feeds of versions: RSS 2.0, whose items have `shortVersionString` and `version` (the build) as elements or at their
/// `enclosure`, with whatever prefix. An item with `version` alone means the version.
namespace Appcast {
/// The items in their order. Throws `AppcastError` for what is no well-formed feed in UTF-8, and for one that brings a
/// document type, in which entities could be defined.
[[nodiscard]] std::vector<AppcastItem> parse(std::string_view xml);

/// The newest item. Items whose version can't be read are passed over; none if there is no other.
[[nodiscard]] const AppcastItem* newest(const std::vector<AppcastItem>& items);
}  // namespace Appcast

}  // namespace quorvane
