#include "diagnostics/PerformanceReportPreferences.h"

#include "base/Text.h"
#include "base/Uuid.h"

namespace quorvane {

bool PerformanceReportPreferences::isEnabled() const {
    return defaults_.value(enabledKey) == "true";
}

bool PerformanceReportPreferences::setEnabled(bool isEnabled) {
    return defaults_.setValue(enabledKey, isEnabled ? "true" : "false");
}

std::string PerformanceReportPreferences::installId() {
    if (auto stored = defaults_.value(installIdKey)) {
        if (const auto id = Uuid::parse(*stored); id && text::lowercased(id->string()) == *stored) return *stored;
    }
    auto made = text::lowercased(Uuid::random().string());
    defaults_.setValue(installIdKey, made);
    return made;
}

}  // namespace quorvane
