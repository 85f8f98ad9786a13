#pragma once

#include "base/RawValue.h"

namespace quorvane {

/// What becomes of a record's time on a bill.
enum class BillingStatus { review, billable, nonBillable, excluded };

template <>
struct RawValues<BillingStatus> {
    static constexpr RawValueTable<BillingStatus, 4> table{{{BillingStatus::review, "review"},
                                                            {BillingStatus::billable, "billable"},
                                                            {BillingStatus::nonBillable, "nonBillable"},
                                                            {BillingStatus::excluded, "excluded"}}};
};

/// Does such a record earn money? One that nobody has reviewed yet does.
[[nodiscard]] constexpr bool countsTowardBilling(BillingStatus status) {
    return status == BillingStatus::review || status == BillingStatus::billable;
}

/// Key of the status's text in the catalogues.
[[nodiscard]] constexpr std::string_view labelKey(BillingStatus status) {
    switch (status) {
    case BillingStatus::review: return "billing_status_review";
    case BillingStatus::billable: return "billing_status_billable";
    case BillingStatus::nonBillable: return "billing_status_non_billable";
    case BillingStatus::excluded: return "billing_status_excluded";
    }
    return {};
}

}  // namespace quorvane
