#include "diagnostics/AppLogger.h"
#include "platform/simulated/RecordingSystemLog.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "shell/state/DockVisibilityController.h"
#include "shell/state/QuorvaneAppDelegate.h"
#include "support/Builders.h"
#include "support/Mapped.h"
#include "support/Matching.h"
#include "support/RecordingConsole.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

using Texts = std::vector<std::string>;

/// Writes down what is done to it.
class Windows final : public ApplicationPresence {
public:
    explicit Windows(std::size_t count) : count_(count) {}

    [[nodiscard]] ActivationPolicy activationPolicy() const override { return policy_; }
    void setActivationPolicy(ActivationPolicy policy) override {
        policy_ = policy;
        calls.emplace_back(policy == ActivationPolicy::accessory ? "accessory" : "regular");
    }
    void activateIgnoringOtherApps() override { calls.emplace_back("activate"); }
    [[nodiscard]] std::size_t windowCount() const override { return count_; }
    [[nodiscard]] bool hasVisibleWindows() const override { return count_ > 0; }
    bool makeKeyAndOrderFront() override {
        calls.emplace_back("front");
        return count_ > 0;
    }

    std::vector<std::string> calls;

private:
    std::size_t count_;
    ActivationPolicy policy_ = ActivationPolicy::regular;
};

TEST(DockVisibilityControllerTest, ChangesOnlyWhatDiffersAndActivatesOnlyWhatShows) {
    Windows windows(1);
    const std::tuple<bool, bool, Texts> rows[] = {{false, false, {}},
                                                  {true, false, {"accessory"}},
                                                  {true, true, {}},
                                                  {false, true, {"regular", "activate", "front"}},
                                                  {false, true, {"activate", "front"}}};
    for (const auto& [hide, activate, calls] : rows) {
        windows.calls.clear();
        DockVisibilityController::apply(windows, hide, activate);
        EXPECT_EQ(windows.calls, calls);
    }
}

TEST(QuorvaneAppDelegateTest, ReopeningTakesTheWindowThatIsThereOrAsksForOne) {
    const std::tuple<std::size_t, bool, Texts, Texts, int> rows[] = {
        {1, true, {}, {"activate"}, 0},
        {2, false, {"Reopen 已唤起现存 NSWindow"}, {"activate", "front"}, 0},
        {0, false, {"Reopen 时无可用窗口，已发 quorvaneReopenMain 通知请求重建"}, {"activate", "front"}, 1}};
    for (const auto& [count, isVisible, outcome, calls, asked] : rows) {
        platform::SimulatedRunLoop runLoop{at("09:00:00")};
        platform::RecordingSystemLog systemLog;
        RecordingConsole console;
        AppLogger logger(runLoop, systemLog, console, {});
        QuorvaneAppDelegate delegate(logger);
        int requests = 0;
        const auto requested = delegate.quorvaneReopenMain.subscribe([&] { ++requests; });
        Windows windows(count);
        EXPECT_TRUE(delegate.applicationShouldHandleReopen(windows, isVisible));
        runLoop.runPosted();
        auto expected = outcome;
        expected.insert(expected.begin(),
                        fmt::format("Reopen 事件：hasVisibleWindows={} windows={}", isVisible, count));
        const auto messages = mapped(logger.logs(), &LogEntry::message);
        EXPECT_EQ(Texts(messages.begin() + 1, messages.end()), expected) << "after the logger's own";
        EXPECT_EQ(windows.calls, calls);
        EXPECT_EQ(requests, asked);
    }
    EXPECT_FALSE(QuorvaneAppDelegate::applicationShouldTerminateAfterLastWindowClosed());
}

}  // namespace
}  // namespace quorvane
