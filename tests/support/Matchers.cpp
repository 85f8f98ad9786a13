#include "support/Matchers.h"

#include "base/Iso8601.h"

namespace quorvane {
namespace {

std::string shown(const std::optional<std::string>& text) {
    return text ? "\"" + *text + "\"" : "none";
}
std::string shown(const std::optional<Date>& date) {
    return date ? iso8601Microseconds(*date) : "none";
}

class IsRecord {
public:
    using is_gtest_matcher = void;

    IsRecord(std::string appName, Date start, std::optional<Date> end)
        : appName_(std::move(appName)), start_(start), end_(end) {}

    bool MatchAndExplain(const std::shared_ptr<ActivityRecord>& record, std::ostream*) const {
        const auto same = [](const std::optional<Date>& a, const std::optional<Date>& b) {
            return a.has_value() == b.has_value() && (!a || microsecondsSince1970(*a) == microsecondsSince1970(*b));
        };
        return record && record->appName() == appName_ && same(record->startTime(), start_) &&
               same(record->endTime(), end_);
    }
    void DescribeTo(std::ostream* out) const {
        *out << "is a record of \"" << appName_ << "\" from " << shown(start_) << " to " << shown(end_);
    }
    void DescribeNegationTo(std::ostream* out) const {
        *out << "is no record of \"" << appName_ << "\" from " << shown(start_) << " to " << shown(end_);
    }

private:
    std::string appName_;
    Date start_;
    std::optional<Date> end_;
};

}  // namespace

void PrintTo(const ActivityRecord& record, std::ostream* out) {
    *out << "record of " << shown(record.appName()) << " from " << shown(record.startTime()) << " to "
         << shown(record.endTime()) << ", title " << shown(record.windowTitle())
         << (record.isDeleted() ? " (deleted)" : "");
}

void PrintTo(const Project& project, std::ostream* out) {
    *out << "project \"" << project.name() << "\" " << project.id().string()
         << (project.isDeleted() ? " (deleted)" : "");
}

void PrintTo(StoreError::Code code, std::ostream* out) {
    switch (code) {
    case StoreError::Code::missing: *out << "missing"; return;
    case StoreError::Code::notAFile: *out << "notAFile"; return;
    case StoreError::Code::noPermission: *out << "noPermission"; return;
    case StoreError::Code::readOnly: *out << "readOnly"; return;
    case StoreError::Code::notAStore: *out << "notAStore"; return;
    case StoreError::Code::foreign: *out << "foreign"; return;
    case StoreError::Code::newer: *out << "newer"; return;
    case StoreError::Code::damaged: *out << "damaged"; return;
    case StoreError::Code::busy: *out << "busy"; return;
    case StoreError::Code::diskFull: *out << "diskFull"; return;
    case StoreError::Code::failed: *out << "failed"; return;
    }
}

testing::Matcher<std::shared_ptr<ActivityRecord>> isRecord(std::string appName, std::string_view start,
                                                           std::optional<std::string_view> end) {
    return IsRecord(std::move(appName), at(start), end ? std::optional(at(*end)) : std::nullopt);
}

}  // namespace quorvane
