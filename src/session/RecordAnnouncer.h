#pragma once

#include "base/Signal.h"
#include "session/LocalTime.h"
#include "store/ActivityRecord.h"
#include "store/ModelContext.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quorvane {

/// Tells people at a terminal about each record that a tracker opens and closes, a line each:
/// "09:00:00  opened  XTerm — title", "09:01:10  closed  XTerm  0:01:10". The context must outlive it. Main thread
/// only.
class RecordAnnouncer {
public:
    enum class Titles { shown, leftOut };

    /// `announce` gets a line without its end; it must not throw.
    RecordAnnouncer(ModelContext& context, std::function<void(const std::string&)> announce,
                    Titles titles = Titles::shown);

private:
    void follow(const EntityChange& change);
    void noteOpened(const std::shared_ptr<ActivityRecord>& record);

    std::function<void(const std::string&)> announce_;
    Titles titles_;
    LocalTime local_;
    std::vector<std::weak_ptr<ActivityRecord>> open_;  ///< announced as opened; hardly ever more than one
    Subscription subscription_;
};

}  // namespace quorvane
