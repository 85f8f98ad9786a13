#pragma once

#include <memory>

namespace quorvane {

/// A pointer that knows when its object is gone. Main thread only, like what it points to.
template <class T>
class WeakHandle {
public:
    WeakHandle() = default;
    explicit WeakHandle(std::weak_ptr<T*> target) : target_(std::move(target)) {}

    /// The object, or none once it has been destroyed.
    [[nodiscard]] T* get() const {
        const auto target = target_.lock();
        return target ? *target : nullptr;
    }
    explicit operator bool() const { return get() != nullptr; }

private:
    std::weak_ptr<T*> target_;
};

/// The source of an object's weak handles. Keep it as the last member, so that it dies first.
template <class T>
class WeakSource {
public:
    explicit WeakSource(T& object) : target_(std::make_shared<T*>(&object)) {}
    WeakSource(const WeakSource&) = delete;
    WeakSource& operator=(const WeakSource&) = delete;

    [[nodiscard]] WeakHandle<T> handle() const { return WeakHandle<T>(target_); }

private:
    std::shared_ptr<T*> target_;
};

}  // namespace quorvane
