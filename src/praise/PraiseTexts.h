#pragma once

#include "praise/PraiseMessage.h"
#include "timeline/TimelineRecordSnapshot.h"

#include <optional>
#include <span>
#include <string>

namespace quorvane {

/// The day that is praised.
struct PraisedDay {
    std::span<const TimelineRecordSnapshot> records;
    double hours = 0;  ///< worked in all; below zero counts as zero
    Date now;          ///< when open records end
};

}  // namespace quorvane

/// How the sentences of a row are filled in.
namespace quorvane::PraiseMessageDatabase {

/// Is the record of this application? Its name contains the entry, or its bundle identifier does in lower case.
[[nodiscard]] bool matches(const TimelineRecordSnapshot& record, const std::string& appType);
[[nodiscard]] bool matchesAny(const TimelineRecordSnapshot& record, const std::vector<std::string>& appTypes);

/// "12", "9.5", "3 minutes": hours from 10 on, hours below, minutes below a tenth of an hour.
[[nodiscard]] std::string hoursText(double hours, SupportedLanguage language);

/// The sentence, with `hoursText` in place of "{hours}". Minutes take the place of a word for hours behind it, too, but
/// in Chinese, whose sentences stay as they are known.
[[nodiscard]] std::string formatMessage(const MultilingualPraiseMessage& row, const PraiseLanguage& language,
                                        double hours);

/// Why: the longest record of an application that the row names and its duration, various applications and the day's
/// hours if there is none. None for a row without a reason.
[[nodiscard]] std::optional<std::string> formatReason(const MultilingualPraiseMessage& row, const PraisedDay& day,
                                                      const PraiseLanguage& language);

}  // namespace quorvane::PraiseMessageDatabase
