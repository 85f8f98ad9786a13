#include "platform/InBackground.h"

#include "platform/simulated/SimulatedRunLoop.h"

#include <gmock/gmock.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace quorvane::platform {
namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAre;

class InBackgroundTest : public testing::Test {
protected:
    SimulatedRunLoop loop{Date{}};
    std::vector<std::string> heard;
};

TEST_F(InBackgroundTest, WorkRunsOffTheMainThreadAndItsResultOrErrorComesBackOnIt) {
    for (const bool fails : {false, true}) {
        inBackground(
            loop,
            [this, fails] {
                heard.push_back(loop.isMainThread() ? "main" : "worker");
                return fails ? throw std::runtime_error("gone") : 42;
            },
            [this](std::future<int> result) {
                EXPECT_TRUE(loop.isMainThread());
                try {
                    heard.push_back(std::to_string(result.get()));
                } catch (const std::runtime_error& error) {
                    heard.push_back(error.what());
                }
            });
    }
    EXPECT_THAT(heard, IsEmpty());
    loop.runPosted();
    EXPECT_THAT(heard, UnorderedElementsAre("worker", "42", "worker", "gone"));
}

}  // namespace
}  // namespace quorvane::platform
