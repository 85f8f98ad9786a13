#pragma once

#include "base/Date.h"
#include "base/Uuid.h"
#include "platform/Clock.h"
#include "store/ActivityCategory.h"
#include "store/ActivityType.h"
#include "store/BillingStatus.h"
#include "store/Entity.h"
#include "store/Project.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// One stretch of attention: an application, its window, document or page, from `startTime` to `endTime`. A record
/// without `endTime` is open. Enumerations are kept as their raw values; what a stored text outside them means, the
/// reader decides.
class ActivityRecord final : public Entity {
public:
    struct Values;

    ActivityRecord() = default;
    explicit ActivityRecord(Values values);

    [[nodiscard]] static const EntityDescription& description();
    [[nodiscard]] const EntityDescription& entityDescription() const override { return description(); }

    Attribute<Uuid> id{*this, Uuid::random()};
    Attribute<Date> startTime{*this, platform::currentDate()};
    Attribute<std::optional<Date>> endTime{*this};
    Attribute<std::string> activityType{*this, std::string(rawValue(ActivityType::app))};
    Attribute<std::optional<std::string>> appBundleId{*this};
    Attribute<std::optional<std::string>> appName{*this};  ///< by it statistics and preferences know an application
    Attribute<std::optional<std::string>> windowTitle{*this};
    Attribute<std::optional<std::string>> documentPath{*this};
    Attribute<std::optional<std::string>> url{*this};
    Attribute<std::optional<std::string>> category{*this};  ///< a raw value, or the name of a category of the user's
    Attribute<std::string> tags{*this};                     ///< joined by ","; a tag can't hold a comma
    Attribute<std::optional<std::string>> source{*this};    ///< "system", "manual", or the trail of the rules
    Attribute<double> confidence{*this, 1.0};               ///< of the classification, 0 to 1
    Attribute<std::string> billingStatus{*this, std::string(rawValue(BillingStatus::review))};
    Attribute<std::optional<std::string>> deviceId{*this};
    Attribute<std::optional<std::string>> userLocalId{*this};
    Attribute<Date> createdAt{*this, platform::currentDate()};
    Attribute<Date> updatedAt{*this, platform::currentDate()};  ///< decides against a copy in the cloud
    Attribute<std::optional<std::string>> cloudKitRecordID{*this};
    Reference<Project> project{*this};

    /// The stored status; an unknown text reads as `review`.
    [[nodiscard]] BillingStatus billingStatusValue() const;
    /// Stores the status and sets `updatedAt` to now.
    void setBillingStatus(BillingStatus status);

    /// The tags, each without blanks around it, empty ones included; no tags, no items.
    [[nodiscard]] std::vector<std::string> tagList() const;
    /// Joins the tags as they are. `updatedAt` stays.
    void setTagList(const std::vector<std::string>& list);
    /// Adds a tag unless it is blank or already there, letter for letter. `updatedAt` stays.
    void addTag(std::string_view tag);
};

/// What a new record is made from; all that is left out takes its default.
struct ActivityRecord::Values {
    Uuid id = Uuid::random();
    Date startTime = platform::currentDate();
    std::optional<Date> endTime{};
    ActivityType activityType = ActivityType::app;
    std::optional<std::string> appBundleId{};
    std::optional<std::string> appName{};
    std::optional<std::string> windowTitle{};
    std::optional<std::string> documentPath{};
    std::optional<std::string> url{};
    std::optional<ActivityCategory> category{};
    std::string tags{};
    std::optional<std::string> source{};
    double confidence = 1.0;
    BillingStatus billingStatus = BillingStatus::review;
    std::optional<std::string> deviceId{};
    std::optional<std::string> userLocalId{};
    Date createdAt = platform::currentDate();
    Date updatedAt = platform::currentDate();
    std::optional<std::string> cloudKitRecordID{};
    std::shared_ptr<Project> project{};
};

}  // namespace quorvane
