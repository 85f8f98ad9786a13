#include "support/Builders.h"

#include "base/Calendar.h"
#include "base/Text.h"

#include <charconv>
#include <stdexcept>

namespace quorvane {
namespace {

/// The number between two places of the text.
template <class Number>
Number numberIn(std::string_view text, std::size_t from, std::size_t count = std::string_view::npos) {
    const auto piece = text.substr(from, count);
    Number number{};
    const auto [end, error] = std::from_chars(piece.data(), piece.data() + piece.size(), number);
    if (error != std::errc{} || end != piece.data() + piece.size())
        throw std::invalid_argument("no time: " + std::string(text));
    return number;
}

}  // namespace

Date at(std::string_view text) {
    if (const auto instant = parseIso8601(text)) return *instant;
    CivilDate day{2026, 3, 2};
    if (const auto blank = text.find(' '); blank != std::string_view::npos) {
        const auto named = parseCivilDate(text.substr(0, blank));
        if (!named) throw std::invalid_argument("no day: " + std::string(text));
        day = *named;
        text.remove_prefix(blank + 1);
    }
    if (text.size() < 8) throw std::invalid_argument("no time: " + std::string(text));
    return Calendar::current().date(day, numberIn<int>(text, 0, 2), numberIn<int>(text, 3, 2),
                                    numberIn<double>(text, 6));
}

RecordBuilder& RecordBuilder::from(std::string_view start) {
    values_.startTime = values_.createdAt = values_.updatedAt = at(start);
    return *this;
}

RecordBuilder& RecordBuilder::to(std::string_view end) {
    values_.endTime = values_.updatedAt = at(end);
    return *this;
}

RecordBuilder& RecordBuilder::app(const std::string& name) {
    values_.appName = name;
    values_.appBundleId = "org.example." + text::lowercased(name);
    return *this;
}

RecordBuilder& RecordBuilder::title(std::string title) {
    values_.windowTitle = std::move(title);
    return *this;
}

RecordBuilder& RecordBuilder::document(std::string path) {
    values_.documentPath = std::move(path);
    return *this;
}

RecordBuilder& RecordBuilder::url(std::string url) {
    values_.url = std::move(url);
    return *this;
}

RecordBuilder& RecordBuilder::category(ActivityCategory category) {
    values_.category = category;
    return *this;
}

RecordBuilder& RecordBuilder::tags(std::string tags) {
    values_.tags = std::move(tags);
    return *this;
}

RecordBuilder& RecordBuilder::source(std::string source) {
    values_.source = std::move(source);
    return *this;
}

RecordBuilder& RecordBuilder::status(BillingStatus status) {
    values_.billingStatus = status;
    return *this;
}

RecordBuilder& RecordBuilder::project(std::shared_ptr<Project> project) {
    values_.project = std::move(project);
    return *this;
}

RecordBuilder& RecordBuilder::updated(std::string_view date) {
    values_.updatedAt = at(date);
    return *this;
}

std::shared_ptr<ActivityRecord> RecordBuilder::make() const {
    return std::make_shared<ActivityRecord>(values_);
}

std::shared_ptr<ActivityRecord> RecordBuilder::in(ModelContext& context) const {
    auto record = make();
    context.insert(record);
    return record;
}

std::shared_ptr<Project> insertProject(ModelContext& context, const std::string& name, double hourlyRate) {
    auto project = std::make_shared<Project>();
    project->name = name;
    project->hourlyRate = hourlyRate;
    context.insert(project);
    return project;
}

}  // namespace quorvane
