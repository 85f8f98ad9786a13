#pragma once

#include "base/Calendar.h"
#include "base/Date.h"
#include "base/RawValue.h"
#include "l10n/Localization.h"

#include <string>

namespace quorvane {

/// What the user picks.
enum class BillingReportRangeKind { week, month, quarter, custom };

template <>
struct RawValues<BillingReportRangeKind> {
    static constexpr RawValueTable<BillingReportRangeKind, 4> table{{{BillingReportRangeKind::week, "week"},
                                                                     {BillingReportRangeKind::month, "month"},
                                                                     {BillingReportRangeKind::quarter, "quarter"},
                                                                     {BillingReportRangeKind::custom, "custom"}}};
};

[[nodiscard]] std::string label(BillingReportRangeKind kind, const Localization& localization);

/// The range of a report: this week, this month or the last 90 days up to now, or whole days from one to another.
struct BillingReportRange {
    BillingReportRangeKind kind = BillingReportRangeKind::month;
    Date customStart{};  ///< any instant of the first day; only of `custom`
    Date customEnd{};    ///< any instant of the last day; only of `custom`
    friend bool operator==(const BillingReportRange&, const BillingReportRange&) = default;

    [[nodiscard]] static BillingReportRange fromKind(BillingReportRangeKind kind, Date customStart, Date customEnd);
};

/// Where the range begins and ends. A week begins as the calendar's locale has it. A custom range ends where the day
/// after its last one begins, which isn't inside; every other one ends now, and this instant is.
[[nodiscard]] Date rangeStart(const BillingReportRange& range, Date now, const Calendar& calendar);
[[nodiscard]] Date rangeEnd(const BillingReportRange& range, Date now, const Calendar& calendar);
[[nodiscard]] bool isEndInside(const BillingReportRange& range);

/// The range as documents name it: the kind, or the first and the last day of a custom range.
[[nodiscard]] std::string rangeLabel(const BillingReportRange& range, const Localization& localization);

}  // namespace quorvane
