#include "store/Entity.h"

#include "store/EntityDescription.h"
#include "store/ModelContext.h"

#include <algorithm>
#include <cassert>

namespace quorvane {

Entity::~Entity() {
    if (context_ != nullptr) context_->forget(*this);
}

void Entity::attributeChanged(const void* attribute) {
    if (context_ != nullptr) {
        const bool isFirstChange = changedAttributes_.empty();
        if (std::find(changedAttributes_.begin(), changedAttributes_.end(), attribute) == changedAttributes_.end())
            changedAttributes_.push_back(attribute);
        context_->noteChange(*this, isFirstChange);
    }
    changed.send();
}

std::shared_ptr<Entity> ReferenceBase::target(const EntityDescription& description) const {
    if (!loaded_ && rowId_ != 0 && owner_.context_ != nullptr) loaded_ = owner_.context_->object(description, rowId_);
    return loaded_;
}

void ReferenceBase::setTarget(std::shared_ptr<Entity> target) {
    if (target && target->isDeleted_) target = nullptr;
    if (target == loaded_ && (target || rowId_ == 0)) return;
    if (target && owner_.context_ != nullptr) owner_.context_->insert(target);
    assert(!target || !owner_.context_ || !target->context_ || target->context_ == owner_.context_);
    if (target && target->rowId_ != 0 && target->rowId_ == rowId_) {
        loaded_ = std::move(target);
        return;
    }
    rowId_ = target ? target->rowId_ : 0;
    loaded_ = std::move(target);
    owner_.attributeChanged(this);
}

std::int64_t ReferenceBase::rowId() const {
    // An object that was inserted or saved after it had been assigned has another row than it had then.
    return loaded_ ? loaded_->rowId_ : rowId_;
}

void ReferenceBase::setRowId(std::int64_t rowId) {
    if (loaded_ && loaded_->rowId_ == rowId && rowId != 0) return;
    loaded_.reset();
    rowId_ = rowId;
}

}  // namespace quorvane
