#include "platform/linux/windows/SettledToplevels.h"

#include "platform/simulated/SimulatedRunLoop.h"
#include "support/Matching.h"

namespace quorvane::platform {
namespace {

class ToldToplevels final : public SettledToplevels {
public:
    explicit ToldToplevels(RunLoop& runLoop) : SettledToplevels(&runLoop, 0.1s) {}
    using SettledToplevels::settle;
    [[nodiscard]] Channel channel() const override { return {}; }
};

class SettledToplevelsTest : public testing::Test {
protected:
    void show(const char* appId, const std::string& title) {
        const ToplevelWindow window{.appId = appId, .title = title};
        windows.settle(window, {window});
    }

    SimulatedRunLoop runLoop{dateFromSecondsSince1970(1'772'000'000)};
    ToldToplevels windows{runLoop};
    std::vector<std::string> told;
    Subscription changes =
        windows.observe([this] { told.push_back(windows.active() ? windows.active()->title : "none"); });
};

TEST_F(SettledToplevelsTest, ThatNoneIsInFrontCountsOnlyIfNoWindowFollows) {
    show("first", "one");
    windows.settle(std::nullopt, windows.all());
    runLoop.playFor(0.05s);
    show("second", "two");
    runLoop.playFor(1s);
    windows.settle(std::nullopt, windows.all());
    windows.settle(std::nullopt, windows.all());
    runLoop.playFor(1s);
    EXPECT_THAT(told, ElementsAre("one", "two", "none"));
}

TEST_F(SettledToplevelsTest, TitlesThatNeverRestAreToldOfTogetherButASwitchAtOnce) {
    for (int i = 0; i < 10'000; ++i) {
        show("player", std::to_string(i));
        if (i % 10 == 0) runLoop.playFor(0.001s);
    }
    EXPECT_LT(told.size(), 40U);
    show("other", "two");
    EXPECT_EQ(told.back(), "two");
    runLoop.playFor(1s);
    show("other", "three");
    EXPECT_EQ(told.back(), "three");
}

}  // namespace
}  // namespace quorvane::platform
