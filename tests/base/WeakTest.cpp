#include "base/Weak.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <utility>

namespace quorvane {
namespace {

struct Member {
    std::function<void()> whenDestroyed;
    ~Member() { whenDestroyed(); }
};

struct Owner {
    explicit Owner(std::function<void()> whenDestroyed) : member{std::move(whenDestroyed)} {}
    Member member;
    WeakSource<Owner> weak{*this};
};

TEST(WeakTest, AHandleIsEmptyFromTheMomentItsObjectBeginsToGo) {
    WeakHandle<Owner> handle;
    EXPECT_EQ(handle.get(), nullptr);
    bool wasSeen = true;
    auto owner = std::make_unique<Owner>([&] { wasSeen = handle.get() != nullptr; });
    handle = owner->weak.handle();
    const WeakHandle<Owner> copy = handle;
    EXPECT_EQ(copy.get(), owner.get());
    owner.reset();
    EXPECT_FALSE(wasSeen);
    EXPECT_EQ(copy.get(), nullptr);
}

}  // namespace
}  // namespace quorvane
