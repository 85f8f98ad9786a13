#include "billing/BillingReportRange.h"

#include "base/DateText.h"

namespace quorvane {
namespace {

constexpr Seconds rollingQuarter = 7'776'000s;  // 90 days, whatever the calendar says

}  // namespace

std::string label(BillingReportRangeKind kind, const Localization& localization) {
    switch (kind) {
    case BillingReportRangeKind::week: return localization.text("range_this_week");
    case BillingReportRangeKind::month: return localization.text("range_this_month");
    case BillingReportRangeKind::quarter: return localization.text("range_last_90_days");
    case BillingReportRangeKind::custom: return localization.text("range_custom");
    }
    return {};
}

BillingReportRange BillingReportRange::fromKind(BillingReportRangeKind kind, Date customStart, Date customEnd) {
    if (kind != BillingReportRangeKind::custom) return {.kind = kind};
    return {.kind = kind, .customStart = customStart, .customEnd = customEnd};
}

Date rangeStart(const BillingReportRange& range, Date now, const Calendar& calendar) {
    switch (range.kind) {
    case BillingReportRangeKind::week: return calendar.week(now).start;
    case BillingReportRangeKind::month: return calendar.month(now).start;
    case BillingReportRangeKind::quarter: return now - rollingQuarter;
    case BillingReportRangeKind::custom: return calendar.startOfDay(range.customStart);
    }
    return now;
}

Date rangeEnd(const BillingReportRange& range, Date now, const Calendar& calendar) {
    if (range.kind != BillingReportRangeKind::custom) return now;
    return calendar.day(range.customEnd).end;
}

bool isEndInside(const BillingReportRange& range) {
    return range.kind != BillingReportRangeKind::custom;
}

std::string rangeLabel(const BillingReportRange& range, const Localization& localization) {
    if (range.kind != BillingReportRangeKind::custom) return label(range.kind, localization);
    return mediumDate(range.customStart) + " — " + mediumDate(range.customEnd);
}

}  // namespace quorvane
