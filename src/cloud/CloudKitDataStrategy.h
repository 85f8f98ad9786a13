#pragma once

#include "cloud/CloudKitSyncError.h"
#include "platform/RecordContainer.h"
#include "platform/RunLoop.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// Which type of record lives in which database, and how it is asked for.
namespace quorvane::CloudKitDataStrategy {

/// Rows that one question brings when nobody says how many: the newest. The most for shares, too. A page of that size
/// costs a server some 50 ms, where a hundred rows would leave a new machine nearly empty.
inline constexpr std::size_t defaultResultLimit = 10'000;

namespace PrivateData {
inline constexpr std::string_view activityRecord = "ActivityRecord";
inline constexpr std::string_view project = "Project";
inline constexpr std::string_view appPreference = "AppPreference";
inline constexpr std::string_view rule = "Rule";
inline constexpr std::string_view userSettings = "UserSettings";
}  // namespace PrivateData

namespace PublicData {
inline constexpr std::string_view activityShare = "ActivityShare";
inline constexpr std::string_view appConfig = "AppConfig";
inline constexpr std::string_view publicStats = "PublicStats";
inline constexpr std::string_view featuredProjects = "FeaturedProjects";
}  // namespace PublicData

/// Keys and the values that records must have under them; empty holds for every record.
using Predicate = std::map<std::string, platform::CloudRecord::Value>;

/// The database of a type. One that is not known counts as private.
[[nodiscard]] platform::DatabaseScope database(std::string_view recordType);

/// Private types: of the user, if one is given. Shares: active ones. All others: every record.
[[nodiscard]] Predicate predicate(std::string_view recordType, const std::optional<std::string>& userId = std::nullopt);

/// What looking up a share by its token brings.
struct ShareLookup {
    std::optional<platform::CloudRecord> share{};  ///< none: there is no such share, or it may not be read
    std::optional<std::string> errorMessage{};
};

/// Looks for the public record of a token, on a worker. `found` comes once, on the main thread; the localization is
/// there until then.
void lookUpShare(const std::string& token, platform::RunLoop& runLoop, std::shared_ptr<platform::RecordSession> session,
                 const Localization& localization, std::function<void(const ShareLookup&)> found);

}  // namespace quorvane::CloudKitDataStrategy
