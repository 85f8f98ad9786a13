#include "billing/CSVExporter.h"

#include "base/Iso8601.h"
#include "billing/FileNameTime.h"
#include "store/BillingStatus.h"
#include "store/ModelContext.h"

#include <fmt/format.h>
#include <iterator>
#include <optional>
#include <unordered_map>

namespace quorvane::CSVExporter {
namespace {

constexpr std::string_view header =
    "id,start_time_iso,end_time_iso,duration_seconds,app_bundle_id,app_name,window_title,document_path,url,category,"
    "project_name,client_name,hourly_rate,currency_code,billing_status,billable_amount,tags,source,confidence,"
    "device_id,user_local_id,created_at,updated_at";

constexpr std::size_t pieceSize = 1 << 16;

/// What a line holds of its project.
struct ProjectColumns {
    Uuid id;
    std::string name;
    std::string clientName;
    double hourlyRate = 0;
    std::string hourlyRateText;
    std::string currencyCode;
};

ProjectColumns columnsOf(const Project& project) {
    return {.id = project.id(),
            .name = project.name(),
            .clientName = project.clientName().value_or(""),
            .hourlyRate = project.hourlyRate(),
            .hourlyRateText = fmt::format("{:.2f}", project.hourlyRate()),
            .currencyCode = project.currencyCode()};
}

/// What a line holds of its record. Instants are whole microseconds since 1970; absent texts are empty.
struct RecordColumns {
    Uuid id;
    std::int64_t startTime = 0;
    std::optional<std::int64_t> endTime;
    std::string_view appBundleId;
    std::string_view appName;
    std::string_view windowTitle;
    std::string_view documentPath;
    std::string_view url;
    std::string_view category;
    const ProjectColumns* project = nullptr;
    std::string_view billingStatus;
    std::string_view tags;
    std::string_view source;
    double confidence = 0;
    std::string_view deviceId;
    std::string_view userLocalId;
    std::int64_t createdAt = 0;
    std::int64_t updatedAt = 0;
};

std::int64_t secondsBetween(std::int64_t start, std::optional<std::int64_t> end) {
    if (!end || *end <= start) return 0;
    // The difference of any two 64-bit integers fits without its sign.
    const std::uint64_t microseconds = static_cast<std::uint64_t>(*end) - static_cast<std::uint64_t>(start);
    return static_cast<std::int64_t>(microseconds / 1'000'000);
}

void appendQuoted(std::string& out, std::string_view value) {
    out += '"';
    for (const char c : value) {
        if (c == '"') out += '"';
        out += c;
    }
    out += '"';
}

bool needsQuotes(std::string_view value) {
    bool found = false;
    for (const char c : value)
        found |= c == ',' || c == '\n' || c == '"';
    return found;
}

/// Writes the values of one line, each with the comma that ends it but for the last.
class LineWriter {
public:
    explicit LineWriter(std::string& out) : out_(out) {}

    void text(std::string_view value) {
        if (needsQuotes(value))
            appendQuoted(out_, value);
        else
            out_ += value;
        out_ += ',';
    }
    void tags(std::string_view value) {
        // Semicolons keep the tags one field that needs no quotes of its own.
        text(value.find(',') == std::string_view::npos ? value : withSemicolons(value));
    }
    void id(const Uuid& value) {
        value.appendTo(out_);
        out_ += ',';
    }
    void instant(std::int64_t microseconds) {
        appendIso8601Seconds(out_, microseconds);
        out_ += ',';
    }
    void integer(std::int64_t value) {
        const fmt::format_int digits(value);
        out_.append(digits.data(), digits.size());
        out_ += ',';
    }
    void real(double value, int decimals) { fmt::format_to(std::back_inserter(out_), "{:.{}f},", value, decimals); }
    void end() { out_.pop_back(); }

private:
    std::string_view withSemicolons(std::string_view value) {
        scratch_.assign(value);
        for (char& c : scratch_)
            if (c == ',') c = ';';
        return scratch_;
    }

    std::string& out_;
    std::string scratch_;
};

void appendLine(std::string& out, const RecordColumns& record) {
    static const ProjectColumns none{.hourlyRateText = "0.00"};
    const ProjectColumns& project = record.project != nullptr ? *record.project : none;
    const std::int64_t seconds = secondsBetween(record.startTime, record.endTime);
    const auto status = fromRawValue<BillingStatus>(record.billingStatus).value_or(BillingStatus::review);
    const double amount =
        countsTowardBilling(status) ? static_cast<double>(seconds) / 3600.0 * project.hourlyRate : 0.0;

    LineWriter line(out);
    line.id(record.id);
    line.instant(record.startTime);
    if (record.endTime)
        line.instant(*record.endTime);
    else
        line.text({});
    line.integer(seconds);
    line.text(record.appBundleId);
    line.text(record.appName);
    line.text(record.windowTitle);
    line.text(record.documentPath);
    line.text(record.url);
    line.text(record.category);
    line.text(project.name);
    line.text(project.clientName);
    line.text(project.hourlyRateText);
    line.text(project.currencyCode);
    line.text(rawValue(status));
    line.real(amount, 2);
    line.tags(record.tags);
    line.text(record.source);
    line.real(record.confidence, 3);
    line.text(record.deviceId);
    line.text(record.userLocalId);
    line.instant(record.createdAt);
    line.instant(record.updatedAt);
    line.end();
}

std::string_view viewOf(const std::optional<std::string>& text) {
    return text ? *text : std::string_view();
}

RecordColumns columnsOf(const ActivityRecord& record, const ProjectColumns* project) {
    const auto end = record.endTime();
    return {.id = record.id(),
            .startTime = microsecondsSince1970(record.startTime()),
            .endTime = end ? std::optional(microsecondsSince1970(*end)) : std::nullopt,
            .appBundleId = viewOf(record.appBundleId()),
            .appName = viewOf(record.appName()),
            .windowTitle = viewOf(record.windowTitle()),
            .documentPath = viewOf(record.documentPath()),
            .url = viewOf(record.url()),
            .category = viewOf(record.category()),
            .project = project,
            .billingStatus = record.billingStatus(),
            .tags = record.tags(),
            .source = viewOf(record.source()),
            .confidence = record.confidence(),
            .deviceId = viewOf(record.deviceId()),
            .userLocalId = viewOf(record.userLocalId()),
            .createdAt = microsecondsSince1970(record.createdAt()),
            .updatedAt = microsecondsSince1970(record.updatedAt())};
}

/// What `writeCSV` reads of each row; `columnsOf(Row)` counts on this order.
const std::vector<std::string> scannedAttributes{
    "id",        "start_time",    "end_time",   "app_bundle_id",  "app_name", "window_title", "document_path",
    "url",       "category",      "project_id", "billing_status", "tags",     "source",       "confidence",
    "device_id", "user_local_id", "created_at", "updated_at"};
constexpr int idColumn = 0;
constexpr int projectColumn = 9;

Uuid uuidOf(std::string_view blob) {
    std::array<std::uint8_t, 16> bytes{};
    if (blob.size() == bytes.size()) std::copy(blob.begin(), blob.end(), bytes.begin());
    return Uuid(bytes);
}

RecordColumns columnsOf(const Row& row, const ProjectColumns* project) {
    const auto text = [&](int column) { return row.isNull(column) ? std::string_view() : row.text(column); };
    return {.id = uuidOf(row.blob(idColumn)),
            .startTime = row.integer(1),
            .endTime = row.isNull(2) ? std::nullopt : std::optional(row.integer(2)),
            .appBundleId = text(3),
            .appName = text(4),
            .windowTitle = text(5),
            .documentPath = text(6),
            .url = text(7),
            .category = text(8),
            .project = project,
            .billingStatus = text(10),
            .tags = text(11),
            .source = text(12),
            .confidence = row.real(13),
            .deviceId = text(14),
            .userLocalId = text(15),
            .createdAt = row.integer(16),
            .updatedAt = row.integer(17)};
}

using ProjectsByRow = std::unordered_map<std::int64_t, ProjectColumns>;

ProjectsByRow readProjects(ModelContext& context) {
    ProjectsByRow projects;
    for (const auto& project : context.fetch<Project>())
        projects.emplace(project->objectId(), columnsOf(*project));
    return projects;
}

}  // namespace

std::int64_t durationSeconds(const ActivityRecord& record) {
    const auto end = record.endTime();
    return secondsBetween(microsecondsSince1970(record.startTime()),
                          end ? std::optional(microsecondsSince1970(*end)) : std::nullopt);
}

std::string makeCSV(const std::vector<std::shared_ptr<ActivityRecord>>& records) {
    std::unordered_map<const Project*, ProjectColumns> projects;
    std::string out(header);
    for (const auto& record : records) {
        const auto project = record->project();
        if (project && !projects.contains(project.get())) projects.emplace(project.get(), columnsOf(*project));
        out += '\n';
        appendLine(out, columnsOf(*record, project ? &projects.at(project.get()) : nullptr));
    }
    return out;
}

void writeCSV(ModelContext& context, const Selection& selection, const Write& write) {
    const ProjectsByRow projects = readProjects(context);
    const auto start = field(&ActivityRecord::startTime);
    const FetchDescriptor<ActivityRecord> descriptor{
        .predicate = start >= selection.start && start <= selection.end,
        .sort = {descending(&ActivityRecord::startTime), ascending(&ActivityRecord::id)}};
    std::string piece(header);
    std::size_t records = 0;
    context.scan(descriptor, scannedAttributes, [&](const Row& row) {
        const auto found = row.isNull(projectColumn) ? projects.end() : projects.find(row.integer(projectColumn));
        const ProjectColumns* project = found == projects.end() ? nullptr : &found->second;
        if (!selection.projects.empty() && (project == nullptr || !selection.projects.contains(project->id)))
            return true;
        piece += '\n';
        appendLine(piece, columnsOf(row, project));
        ++records;
        if (piece.size() < pieceSize) return true;
        write(piece, records);
        piece.clear();
        return true;
    });
    write(piece, records);
}

std::string defaultFileName(Date now) {
    return "Quorvane_Activities_" + fileNameTime(now) + ".csv";
}

}  // namespace quorvane::CSVExporter
