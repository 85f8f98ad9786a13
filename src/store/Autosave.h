#pragma once

#include "base/Weak.h"
#include "platform/RunLoop.h"
#include "store/ModelContext.h"

#include <functional>

namespace quorvane {

/// Saves a context shortly after it was changed, for screens whose edits need no button. A save that fails is reported
/// and tried again after the next change. What is due when it goes is saved then. The context must outlive it.
class Autosave {
public:
    /// `failed` hears of saves that did not succeed.
    Autosave(platform::RunLoop& runLoop, ModelContext& context, Seconds delay,
             std::function<void(const StoreError&)> failed);
    Autosave(const Autosave&) = delete;
    Autosave& operator=(const Autosave&) = delete;
    ~Autosave();

private:
    void save();

    platform::RunLoop& runLoop_;
    ModelContext& context_;
    Seconds delay_;
    std::function<void(const StoreError&)> failed_;
    std::unique_ptr<platform::WorkItem> pending_;
    Subscription subscription_;
    WeakSource<Autosave> weak_{*this};
};

}  // namespace quorvane
