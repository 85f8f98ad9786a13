#pragma once

#include "base/Date.h"
#include "base/Uuid.h"
#include "billing/BillingFilters.h"
#include "store/BillingStatus.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace quorvane {

class ModelContext;
class Project;

/// What a bill needs to know of a project.
struct BillingProject {
    Uuid id;
    std::string name;
    std::optional<std::string> clientName;
    double hourlyRate = 0;  ///< money per hour in `currencyCode`
    std::string currencyCode;
};

/// What a bill needs to know of a record. Texts and project belong to whoever made it.
struct BillingRecord {
    Uuid id;
    Date startTime;
    std::optional<Date> endTime;  ///< none while open
    std::string_view appName;     ///< empty for none
    std::string_view category;    ///< empty for none
    BillingStatus billingStatus = BillingStatus::review;
    double confidence = 1;
    const BillingProject* project = nullptr;
};

/// What a bill needs to know of time that was given to a project by hand.
struct BillingAnnotation {
    Uuid id;
    Date startTime;
    Date endTime;
    const BillingProject* project = nullptr;
};

/// The projects, and the records and annotations that a report over a range can hold, as light values: a month among
/// ten years costs what the month costs. Read once, so that everything in a report comes from one moment.
class BillingLedger {
public:
    /// Reads all projects; of records those with a project that the filter lets through and a start from `start` to
    /// `end`, both inside, and not before `recordsSince`; of annotations those with such a project that end behind
    /// `start` and begin until `end`. Changes that the context hasn't saved count. Throws `StoreError`.
    static BillingLedger load(ModelContext& context, Date start, Date end, const BillingFilters& filters,
                              std::optional<Date> recordsSince = std::nullopt);

    BillingLedger(BillingLedger&&) noexcept = default;
    BillingLedger& operator=(BillingLedger&&) noexcept = default;

    /// In the order of their insertion; they stay where they are.
    [[nodiscard]] const std::deque<BillingProject>& projects() const { return projects_; }
    /// Newest first, among equals the smaller id first.
    [[nodiscard]] const std::vector<BillingRecord>& records() const { return records_; }
    [[nodiscard]] const std::vector<BillingAnnotation>& annotations() const { return annotations_; }

private:
    BillingLedger() = default;
    void loadRecords(ModelContext& context, Date start, Date end, const Project& stored, const BillingProject& project);
    void loadAnnotations(ModelContext& context, Date start, Date end,
                         const std::unordered_map<std::int64_t, const BillingProject*>& projects);
    [[nodiscard]] std::string_view kept(std::string_view text);

    std::deque<BillingProject> projects_;
    std::vector<BillingRecord> records_;
    std::vector<BillingAnnotation> annotations_;
    std::unordered_set<std::string> texts_;  ///< names of applications and categories, each once
};

}  // namespace quorvane
