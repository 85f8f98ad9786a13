#pragma once

#include "l10n/Localization.h"
#include "platform/CloudRecord.h"
#include "store/ActivityRecord.h"

#include <memory>

namespace quorvane {

class ConsoleSink;
class ModelContext;

/// The cloud form of a record: type "ActivityRecord", named by the record's id.
[[nodiscard]] platform::CloudRecord makeCloudRecord(const ActivityRecord& record);

/// A new record, free, from its cloud form. Every missing value has its fallback; a category outside the built-in ones
/// is dropped. With a context the project is looked up, or made as a placeholder.
[[nodiscard]] std::shared_ptr<ActivityRecord> makeActivityRecord(const platform::CloudRecord& cloudRecord,
                                                                 ModelContext* context, ConsoleSink& console,
                                                                 const Localization& localization);

/// Takes over the cloud form if it is strictly newer than the record; the newer one wins as a whole. A newer form
/// without an end opens the record again; none without a project takes its project away.
void applyCloudRecord(ActivityRecord& record, const platform::CloudRecord& cloudRecord, ModelContext* context,
                      ConsoleSink& console, const Localization& localization);

/// The project with that id, or a placeholder that is saved at once, under a name in the user's language. None if the
/// store fails; the console says why.
[[nodiscard]] std::shared_ptr<Project> findOrCreateProject(const Uuid& id, ModelContext& context, ConsoleSink& console,
                                                           const Localization& localization);

}  // namespace quorvane
