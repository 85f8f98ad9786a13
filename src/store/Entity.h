#pragma once

#include "base/Signal.h"
#include "store/ValueTraits.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace quorvane {

class ModelContext;
struct EntityDescription;

/// A persisted object. It is made free, becomes part of a context by `ModelContext::insert` or a fetch, and stays
/// readable after it has been removed. It belongs to its context's thread.
class Entity : public std::enable_shared_from_this<Entity> {
public:
    Entity() = default;
    Entity(const Entity&) = delete;
    Entity& operator=(const Entity&) = delete;
    virtual ~Entity();

    /// The attributes of the object's own class.
    [[nodiscard]] virtual const EntityDescription& entityDescription() const = 0;

    /// Where the object lives; none before it is inserted, after it was removed, and when the context is gone.
    [[nodiscard]] ModelContext* context() const { return context_; }

    /// Was it removed from the store? Then it keeps its last values and no change of it is saved.
    [[nodiscard]] bool isDeleted() const { return isDeleted_; }

    /// Identity inside the context: the row once saved, below 0 before, 0 while free.
    [[nodiscard]] std::int64_t objectId() const { return rowId_; }

    /// Sent after each change of an attribute.
    Signal<> changed;

private:
    friend class ModelContext;
    friend class ReferenceBase;
    template <class T>
    friend class Attribute;

    void attributeChanged(const void* attribute);

    ModelContext* context_ = nullptr;
    const EntityDescription* description_ = nullptr;  ///< set with the context
    std::int64_t rowId_ = 0;  ///< 0: free; below 0: inserted and not saved yet; above: row of the table
    bool isDeleted_ = false;
    std::vector<const void*> changedAttributes_;  ///< since the last save, each once
};

/// One attribute of an entity. Reading is a call, `record->endTime()`; writing an assignment, `record->endTime = end`.
/// A write that changes nothing isn't a change.
template <class T>
class Attribute {
public:
    using Value = T;

    explicit Attribute(Entity& owner, T initial = {}) : owner_(owner), value_(std::move(initial)) {}
    Attribute(const Attribute&) = delete;

    [[nodiscard]] const T& operator()() const { return value_; }

    Attribute& operator=(T value) {
        if (value == value_) return *this;
        value_ = std::move(value);
        owner_.attributeChanged(this);
        return *this;
    }
    Attribute& operator=(const Attribute& other) { return *this = other.value_; }

private:
    friend struct AttributeAccess;
    Entity& owner_;
    T value_;
};

/// What all to-one relationships share: the row of the other object, and the object once somebody asked for it.
class ReferenceBase {
public:
    explicit ReferenceBase(Entity& owner) : owner_(owner) {}
    ReferenceBase(const ReferenceBase&) = delete;
    ReferenceBase& operator=(const ReferenceBase&) = delete;

protected:
    friend struct AttributeAccess;
    friend class ModelContext;

    [[nodiscard]] std::shared_ptr<Entity> target(const EntityDescription& description) const;
    void setTarget(std::shared_ptr<Entity> target);

    /// Row of the target, 0 for none; below 0 while the target isn't saved.
    [[nodiscard]] std::int64_t rowId() const;
    void setRowId(std::int64_t rowId);

private:
    Entity& owner_;
    std::int64_t rowId_ = 0;
    mutable std::shared_ptr<Entity> loaded_;
};

/// A to-one relationship. `record->project()` fetches the object at its first use, which throws `StoreError` if the
/// store can't be read; none stands for no object. What a part of a context leads to becomes part of it too; a removed
/// object can't be led to.
template <class E>
class Reference : public ReferenceBase {
public:
    using ReferenceBase::ReferenceBase;

    [[nodiscard]] std::shared_ptr<E> operator()() const {
        return std::static_pointer_cast<E>(target(E::description()));
    }
    Reference& operator=(std::shared_ptr<E> object) {
        setTarget(std::move(object));
        return *this;
    }
};

}  // namespace quorvane
