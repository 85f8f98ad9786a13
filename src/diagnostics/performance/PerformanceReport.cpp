#include "diagnostics/performance/PerformanceReport.h"

#include "base/Json.h"

#include <cmath>

namespace quorvane {
namespace {

/// Calls `visit` with the key and the field of each, in their order.
template <class Report, class Visit>
void forEachField(Report& report, const Visit& visit) {
    visit("app_id", report.appID);
    visit("report_id", report.reportID);
    visit("install_id", report.installID);
    visit("app_version", report.appVersion);
    visit("build", report.build);
    visit("os_version", report.osVersion);
    visit("arch", report.arch);
    visit("locale", report.locale);
    visit("captured_at", report.capturedAt);
    visit("active_surface", report.activeSurface);
    visit("threshold_percent", report.thresholdPercent);
    visit("sustained_seconds", report.sustainedSeconds);
    visit("peak_cpu_percent", report.peakCPUPercent);
    visit("average_cpu_percent", report.averageCPUPercent);
    visit("sample_duration_seconds", report.sampleDurationSeconds);
    visit("call_stacks_format", report.callStacksFormat);
    visit("call_stacks", report.callStacks);
}

/// Puts fields into an object.
struct Writer {
    Json& object;
    bool& isWhole;

    void operator()(const char* key, const std::optional<std::string>& value) const {
        if (value) object[key] = *value;
    }
    void operator()(const char* key, double value) const {
        isWhole = isWhole && std::isfinite(value);
        object[key] = value;
    }
    void operator()(const char* key, const auto& value) const { object[key] = value; }
};

/// Takes fields out of an object; a missing one and one of another kind throw.
struct Reader {
    const Json& object;

    void operator()(const char* key, std::optional<std::string>& value) const {
        if (object.contains(key)) value = object.at(key).get<std::string>();
    }
    template <class Value>
    void operator()(const char* key, Value& value) const {
        object.at(key).get_to(value);
    }
};

}  // namespace

std::optional<std::string> performanceReportJson(const PerformanceReport& report) {
    Json object = Json::object();
    bool isWhole = true;
    forEachField(report, Writer{object, isWhole});
    return isWhole ? std::optional(jsonText(object)) : std::nullopt;
}

std::optional<PerformanceReport> parsePerformanceReport(std::string_view json) {
    const auto object = parseJson(json);
    if (!object || !object->is_object()) return std::nullopt;
    try {
        PerformanceReport report;
        forEachField(report, Reader{*object});
        return report;
    } catch (const Json::exception&) {
        return std::nullopt;
    }
}

}  // namespace quorvane
