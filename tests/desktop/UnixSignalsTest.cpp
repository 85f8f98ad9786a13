#include "platform/linux/loop/UnixSignals.h"
#include "desktop/support/Waiting.h"
#include "platform/linux/loop/QtRunLoop.h"

#include <csignal>
#include <gmock/gmock.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace quorvane::platform {
namespace {

TEST(UnixSignalsTest, SignalsArriveInATurnOfTheLoop) {
    QtRunLoop runLoop;
    std::vector<int> received;
    {
        const UnixSignals signals({SIGINT, SIGTERM}, [&](int signal) {
            EXPECT_TRUE(runLoop.isMainThread());
            received.push_back(signal);
        });
        std::raise(SIGINT);
        EXPECT_TRUE(received.empty());
        ASSERT_TRUE(waitUntil([&] { return received.size() == 1; }));
        std::jthread([] { kill(getpid(), SIGTERM); });  // whichever thread it interrupts
        ASSERT_TRUE(waitUntil([&] { return received.size() == 2; }));
    }
    EXPECT_EQ(received, (std::vector{SIGINT, SIGTERM}));
    struct sigaction now {};
    sigaction(SIGTERM, nullptr, &now);
    EXPECT_EQ(now.sa_handler, SIG_DFL) << "afterwards they end the process again";
}

}  // namespace
}  // namespace quorvane::platform
