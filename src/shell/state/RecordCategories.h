#pragma once

#include "base/Date.h"
#include "base/Signal.h"
#include "base/Weak.h"
#include "diagnostics/ConsoleSink.h"
#include "platform/RunLoop.h"
#include "store/ModelContainer.h"

#include <set>
#include <string>

namespace quorvane {

/// The categories that records have. No index leads to them, so a worker looks through the records, and what changes
/// later is added at once. Main thread only; what it is made on outlives it.
class RecordCategories {
public:
    /// Of the records that begin at `since` or later.
    RecordCategories(ModelContainer& store, platform::RunLoop& runLoop, ConsoleSink& console, Date since);

    /// Looks through the records anew; a category that no record has any more goes with that alone.
    void refresh();

    /// Without blanks around them, each once.
    [[nodiscard]] const std::set<std::string>& names() const { return names_; }

    Signal<> changed;

private:
    void take(std::set<std::string> names);
    void follow(const EntityChange& change);

    ModelContext& context_;
    ModelConfiguration reading_;  ///< how a worker opens the store
    platform::RunLoop& runLoop_;
    ConsoleSink& console_;
    Date since_;
    std::set<std::string> names_;
    std::set<std::string> added_;  ///< while a worker looks, as it may have passed by already
    int searches_ = 0;             ///< the last one's outcome counts
    Subscription recordsChanged_;
    WeakSource<RecordCategories> weak_{*this};  // last: dies first, so that no callback meets half an object
};

}  // namespace quorvane
