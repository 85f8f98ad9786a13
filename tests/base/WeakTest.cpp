#include "base/Weak.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

struct Owner {
    struct Member {
        const WeakHandle<Owner>& handle;
        bool& wasSeen;
        ~Member() { wasSeen = handle.get() != nullptr; }
    } member;
    WeakSource<Owner> weak{*this};
};

TEST(WeakTest, AHandleIsEmptyFromTheMomentItsObjectBeginsToGo) {
    WeakHandle<Owner> handle;
    bool wasSeen = true;
    {
        Owner owner{{handle, wasSeen}};
        handle = owner.weak.handle();
        EXPECT_EQ(handle.get(), &owner);
    }
    EXPECT_FALSE(wasSeen);
}

}  // namespace
}  // namespace quorvane
