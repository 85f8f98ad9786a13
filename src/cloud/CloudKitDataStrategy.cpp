#include "cloud/CloudKitDataStrategy.h"

#include "platform/InBackground.h"

#include <algorithm>
#include <array>

namespace quorvane::CloudKitDataStrategy {
namespace {

constexpr std::array privateTypes{PrivateData::activityRecord, PrivateData::project, PrivateData::appPreference,
                                  PrivateData::rule, PrivateData::userSettings};
constexpr std::array publicTypes{PublicData::activityShare, PublicData::appConfig, PublicData::publicStats,
                                 PublicData::featuredProjects};

ShareLookup resultOf(std::future<std::optional<platform::CloudRecord>> record, const Localization& localization) {
    try {
        return {.share = record.get()};
    } catch (const platform::CloudFailure& failure) {
        const auto error = CloudKitSyncError::from(failure);
        return {.errorMessage = localization.text("share_lookup_failed", error.text(localization))};
    }
}

}  // namespace

platform::DatabaseScope database(std::string_view recordType) {
    const bool isPublic = std::ranges::find(publicTypes, recordType) != publicTypes.end();
    return isPublic ? platform::DatabaseScope::publicData : platform::DatabaseScope::privateData;
}

Predicate predicate(std::string_view recordType, const std::optional<std::string>& userId) {
    if (recordType == PublicData::activityShare) return {{"isActive", true}};
    const bool isPrivate = std::ranges::find(privateTypes, recordType) != privateTypes.end();
    if (isPrivate && userId) return {{"userId", *userId}};
    return {};
}

void lookUpShare(const std::string& token, platform::RunLoop& runLoop, std::shared_ptr<platform::RecordSession> session,
                 const Localization& localization, std::function<void(const ShareLookup&)> found) {
    platform::inBackground(
        runLoop,
        [session = std::move(session), token]() -> std::optional<platform::CloudRecord> {
            auto record = session->record(database(PublicData::activityShare), token);
            // A reader sees active shares alone; their owner sees the others, too.
            if (record && (record->recordType != PublicData::activityShare || record->get<bool>("isActive") != true))
                record.reset();
            return record;
        },
        [found = std::move(found), &localization](std::future<std::optional<platform::CloudRecord>> record) {
            found(resultOf(std::move(record), localization));
        });
}

}  // namespace quorvane::CloudKitDataStrategy
