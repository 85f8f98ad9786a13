#pragma once

#include "base/Color.h"
#include "base/Uuid.h"
#include "billing/BillingFilters.h"
#include "billing/BillingReportBuilder.h"
#include "billing/BillingReportRange.h"
#include "l10n/Localization.h"
#include "timeline/ProjectTone.h"

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// What the billing screen's cards and its table say of a report.
namespace quorvane {

/// One step of the checkout.
struct CheckoutStepCard {
    int index = 1;
    std::string title;
    std::string value;
    std::string caption;
    std::string systemImage;  ///< name of an icon
    friend bool operator==(const CheckoutStepCard&, const CheckoutStepCard&) = default;
};

/// One figure of the report.
struct BillingMetricCard {
    std::string title;
    std::string value;
    std::string caption;
    friend bool operator==(const BillingMetricCard&, const BillingMetricCard&) = default;
};

/// One project's line of the table.
struct BillingTableRow {
    Uuid id;  ///< the project's
    ProjectTone tone;
    std::string projectName;
    std::string clientName;
    std::string hours;
    std::string reviewHours;
    std::string hourlyRate;
    std::string amount;
    bool hasClient = false;  ///< else `clientName` says that there is none
    bool needsReview = false;
    bool hasRate = false;  ///< else rate and amount say that there is none
    friend bool operator==(const BillingTableRow&, const BillingTableRow&) = default;
};

namespace BillingCards {

/// "4.6 h"
[[nodiscard]] std::string hoursText(double hours);

/// The range and, where one is chosen, the category.
[[nodiscard]] std::string scopeCaption(const BillingReportRange& range, const BillingFilters& filters,
                                       const Localization& localization);

[[nodiscard]] std::array<CheckoutStepCard, 3> checkoutSteps(const std::vector<BillingReportRow>& rows,
                                                            const BillingReportRange& range,
                                                            const BillingFilters& filters,
                                                            const Localization& localization);

[[nodiscard]] std::array<BillingMetricCard, 3> metrics(const std::vector<BillingReportRow>& rows,
                                                       const Localization& localization);

/// The line of a row; `colorName` is the one that is stored with its project, empty for none.
[[nodiscard]] BillingTableRow tableRow(const BillingReportRow& row, const std::string& colorName,
                                       const Localization& localization);

}  // namespace BillingCards
}  // namespace quorvane
