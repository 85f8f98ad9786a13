#pragma once

#include "base/Date.h"
#include "store/ActivityRecord.h"
#include "store/ModelContext.h"
#include "store/Project.h"

#include <memory>
#include <string>
#include <string_view>

namespace quorvane {

/// An instant as people write it: a time of Monday, 2 March 2026 ("09:00:00", "09:00:00.5") or of a day that is named
/// ("2026-03-29 01:30:00"), both in the process's time zone; or a whole instant ("2026-03-02T09:00:00Z").
[[nodiscard]] Date at(std::string_view text);

/// What can be said of a record in a sentence: `aRecord().from("09:00:00").to("09:30:00").app("Editor").in(context)`.
/// It is open until it gets an end. An application's bundle identifier is made of its name: "org.example.editor".
class RecordBuilder {
public:
    RecordBuilder& from(std::string_view start);
    RecordBuilder& to(std::string_view end);
    RecordBuilder& app(const std::string& name);
    RecordBuilder& title(std::string title);
    RecordBuilder& document(std::string path);
    RecordBuilder& url(std::string url);
    RecordBuilder& category(ActivityCategory category);
    RecordBuilder& tags(std::string tags);
    RecordBuilder& source(std::string source);
    RecordBuilder& status(BillingStatus status);
    RecordBuilder& project(std::shared_ptr<Project> project);
    RecordBuilder& updated(std::string_view date);

    /// A free record.
    [[nodiscard]] std::shared_ptr<ActivityRecord> make() const;

    /// A record that was inserted and not saved yet.
    std::shared_ptr<ActivityRecord> in(ModelContext& context) const;

private:
    ActivityRecord::Values values_{
        .startTime = at("09:00:00"), .createdAt = at("09:00:00"), .updatedAt = at("09:00:00")};
};

[[nodiscard]] inline RecordBuilder aRecord() {
    return {};
}

/// A project that was inserted and not saved yet.
std::shared_ptr<Project> insertProject(ModelContext& context, const std::string& name, double hourlyRate = 0);

}  // namespace quorvane
