#pragma once

#include "platform/UserDefaults.h"

#include <string>

namespace quorvane {

/// What the user has decided about reports of Quorvane's own use of the processor, and the name under which this
/// installation sends them. Main thread only.
class PerformanceReportPreferences {
public:
    static constexpr const char* enabledKey = "perf-reports.enabled";
    static constexpr const char* installIdKey = "perf-reports.install-id";

    /// `defaults` outlives it.
    explicit PerformanceReportPreferences(platform::UserDefaults& defaults) : defaults_(defaults) {}

    /// They are off until somebody says yes.
    [[nodiscard]] bool isEnabled() const;
    /// False if it could not be kept.
    bool setEnabled(bool isEnabled);

    /// Random, and made when it is first read: 36 characters, lower case.
    [[nodiscard]] std::string installId();

private:
    platform::UserDefaults& defaults_;
};

}  // namespace quorvane
