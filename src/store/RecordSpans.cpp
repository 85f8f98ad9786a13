#include "store/RecordSpans.h"

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <tuple>

namespace quorvane::RecordSpans {
namespace {

/// As `ValueTraits` reads it, without a copy of the bytes for each of many rows.
Uuid identifier(std::string_view bytes) {
    std::array<std::uint8_t, 16> copy{};
    if (bytes.size() == copy.size()) std::ranges::copy(bytes, copy.begin());
    return Uuid(copy);
}

/// What records have to agree in to be one piece of work; the bundle comes first.
constexpr std::array content{"app_bundle_id", "app_name",   "activity_type", "window_title", "document_path",
                             "url",           "project_id", "category",      "tags",         "billing_status"};

std::size_t mixed(std::size_t seed, std::string_view text) {
    return seed * 31 + std::hash<std::string_view>{}(text);
}

/// As `scanned` has it from the columns.
std::size_t likenessOf(const ActivityRecord& record) {
    std::size_t likeness = 0;
    for (const char* name : content) {
        const SqlValue value = ActivityRecord::description().attribute(name)->get(record);
        const auto* text = std::get_if<std::string>(&value);
        const auto* row = std::get_if<std::int64_t>(&value);
        likeness = mixed(likeness, text ? *text : row ? std::to_string(*row) : std::string());
    }
    return likeness;
}

/// Reads stored rows; right only while nothing is unsaved.
std::vector<RecordSpan> scanned(ModelContext& context, const FetchDescriptor<ActivityRecord>& descriptor,
                                bool withContent) {
    std::vector<std::string> columns{"pk", "start_time", "end_time", "id"};
    const auto firstOfContent = static_cast<int>(columns.size());
    if (withContent) columns.insert(columns.end(), content.begin(), content.end());
    std::vector<RecordSpan> spans;
    spans.reserve(std::min(descriptor.limit.value_or(0), sliceSize));
    context.scan(descriptor, columns, [&](const Row& row) {
        RecordSpan span{.objectId = row.integer(0), .start = dateFromMicroseconds(row.integer(1))};
        if (!row.isNull(2)) span.end = dateFromMicroseconds(row.integer(2));
        span.id = identifier(row.blob(3));
        if (withContent) span.bundleId = row.text(firstOfContent);
        for (int i = firstOfContent; i < static_cast<int>(columns.size()); ++i)
            span.likeness = mixed(span.likeness, row.isNull(i) ? std::string_view() : row.text(i));
        spans.push_back(std::move(span));
        return true;
    });
    return spans;
}

/// How many spans stand before the last start: one that comes later may start at the same instant and is not read yet.
std::size_t beforeLastStart(const std::vector<RecordSpan>& spans) {
    std::size_t end = spans.size();
    while (end > 0 && spans[end - 1].start == spans.back().start)
        --end;
    return end;
}

}  // namespace

std::vector<SortOrder> order() {
    return {ascending(&ActivityRecord::startTime), ascending(&ActivityRecord::id)};
}

std::vector<RecordSpan> read(ModelContext& context, const Query& query, std::size_t limit) {
    // Sorted by identifier as well below: the database would sort all of what an index hands it nearly in order.
    FetchDescriptor<ActivityRecord> descriptor{
        .predicate = query.predicate, .sort = {ascending(&ActivityRecord::startTime)}, .limit = limit};
    if (query.from) descriptor.predicate = field(&ActivityRecord::startTime) >= *query.from && query.predicate;
    std::vector<RecordSpan> spans;
    if (context.hasChanges()) {
        std::ranges::transform(context.fetch(descriptor), std::back_inserter(spans),
                               [](const auto& record) { return spanOf(*record); });
    } else {
        spans = scanned(context, descriptor, query.withContent);
    }
    const auto isBefore = [](const RecordSpan& a, const RecordSpan& b) {
        return std::tie(a.start, a.id) < std::tie(b.start, b.id);
    };
    if (!std::ranges::is_sorted(spans, isBefore)) std::ranges::sort(spans, isBefore);
    return spans;
}

void forEach(ModelContext& context, Query query, const std::function<void(const RecordSpan&)>& visit,
             std::size_t slice) {
    for (std::size_t limit = slice;;) {
        const auto spans = read(context, query, limit);
        const bool isLast = spans.size() < limit;
        const std::size_t end = isLast ? spans.size() : beforeLastStart(spans);
        for (std::size_t i = 0; i < end; ++i)
            visit(spans[i]);
        if (isLast) return;
        // A slice in which all start at one instant grows until it shows where the next one begins.
        limit = end == 0 ? limit * 2 : slice;
        query.from = spans.back().start;
    }
}

std::shared_ptr<ActivityRecord> record(ModelContext& context, const RecordSpan& span) {
    return std::static_pointer_cast<ActivityRecord>(context.object(ActivityRecord::description(), span.objectId));
}

RecordSpan spanOf(const ActivityRecord& record) {
    return {.objectId = record.objectId(),
            .start = record.startTime(),
            .end = record.endTime(),
            .id = record.id(),
            .bundleId = record.appBundleId().value_or(""),
            .likeness = likenessOf(record)};
}

bool agree(const ActivityRecord& a, const ActivityRecord& b) {
    return std::ranges::all_of(content, [&](const char* name) {
        const auto& attribute = *ActivityRecord::description().attribute(name);
        return compare(attribute.get(a), attribute.get(b)) == 0;
    });
}

}  // namespace quorvane::RecordSpans
