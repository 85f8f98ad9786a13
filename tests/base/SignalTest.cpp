#include "base/Signal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SignalTest : public testing::Test {
protected:
    auto noting(std::string what) {
        return [this, what] { heard.push_back(what); };
    }

    Signal<> signal;
    std::vector<std::string> heard;
};

TEST_F(SignalTest, ListenersAreCalledInOrderForAsLongAsTheirSubscriptionLives) {
    const auto first = signal.subscribe(noting("first"));
    {
        const auto second = signal.subscribe(noting("second"));
        signal.send();
        EXPECT_EQ(signal.listeners(), 2U);
    }
    signal.send();
    EXPECT_THAT(heard, ElementsAre("first", "second", "first"));
    EXPECT_EQ(signal.listeners(), 1U);
}

TEST_F(SignalTest, EveryListenerGetsTheWholeValue) {
    Signal<std::string, int> values;
    const auto note = [this](const std::string& text, int number) { heard.push_back(text + std::to_string(number)); };
    const auto first = values.subscribe([&](std::string text, int number) { note(std::move(text), number); });
    const auto second = values.subscribe(note);
    values.send("a text too long to be kept in place", 7);
    EXPECT_THAT(heard, ElementsAre("a text too long to be kept in place7", "a text too long to be kept in place7"));
}

TEST_F(SignalTest, AListenerMayEndItselfAndOthersWhileItIsCalled) {
    Subscription itself;
    Subscription later;
    itself = signal.subscribe([&, note = std::string("captured text that lives in the listener")] {
        itself.reset();
        later.reset();
        heard.push_back(note.substr(0, 8));
    });
    later = signal.subscribe(noting("later"));
    const auto last = signal.subscribe(noting("last"));
    signal.send();
    signal.send();
    EXPECT_THAT(heard, ElementsAre("captured", "last", "last"));
}

TEST_F(SignalTest, AListenerAddedWhileSendingHearsTheNextOne) {
    Subscription added;
    const auto first = signal.subscribe([&] {
        heard.push_back("first");
        if (heard.size() == 1) added = signal.subscribe(noting("added"));
    });
    signal.send();
    EXPECT_THAT(heard, ElementsAre("first"));
    signal.send();
    EXPECT_THAT(heard, ElementsAre("first", "first", "added"));
}

TEST_F(SignalTest, AListenerMaySendAgain) {
    const auto listening = signal.subscribe([&] {
        heard.push_back("heard");
        if (heard.size() < 3) signal.send();
    });
    signal.send();
    EXPECT_THAT(heard, ElementsAre("heard", "heard", "heard"));
}

TEST_F(SignalTest, ASubscriptionMayOutliveTheSignal) {
    auto shortLived = std::make_unique<Signal<>>();
    auto subscription = shortLived->subscribe(noting("never"));
    shortLived.reset();
    subscription.reset();
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(SignalTest, ASignalMayBeDestroyedByItsListener) {
    auto shortLived = std::make_unique<Signal<>>();
    const auto subscription = shortLived->subscribe([&] {
        heard.push_back("heard");
        shortLived.reset();
    });
    shortLived->send();
    EXPECT_THAT(heard, ElementsAre("heard"));
}

TEST_F(SignalTest, AMovedSubscriptionIsTheSameOne) {
    auto original = signal.subscribe(noting("one"));
    auto replaced = signal.subscribe(noting("two"));
    replaced = std::move(original);
    signal.send();
    EXPECT_THAT(heard, ElementsAre("one"));
    original.reset();
    signal.send();
    EXPECT_THAT(heard, ElementsAre("one", "one"));
    replaced.reset();
    signal.send();
    EXPECT_THAT(heard, ElementsAre("one", "one"));
}

}  // namespace
}  // namespace quorvane
