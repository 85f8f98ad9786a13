#include "store/Autosave.h"

namespace quorvane {

Autosave::Autosave(platform::RunLoop& runLoop, ModelContext& context, Seconds delay,
                   std::function<void(const StoreError&)> failed)
    : runLoop_(runLoop), context_(context), delay_(delay), failed_(std::move(failed)) {
    subscription_ = context.didChange.subscribe([this](const EntityChange&) {
        if (pending_) return;
        pending_ = runLoop_.after(delay_, [weak = weak_.handle()] {
            if (auto* self = weak.get()) self->save();
        });
    });
}

Autosave::~Autosave() {
    if (pending_) save();
}

void Autosave::save() {
    pending_.reset();
    try {
        context_.save();
    } catch (const StoreError& error) {
        failed_(error);
    }
}

}  // namespace quorvane
