#include "base/Signal.h"

#include "support/Matching.h"

#include <memory>
#include <string>
#include <vector>

namespace quorvane {
namespace {

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
    }
    signal.send();
    EXPECT_THAT(heard, ElementsAre("first", "second", "first"));
    EXPECT_EQ(signal.listeners(), 1U);
}

TEST_F(SignalTest, EveryListenerGetsTheWholeValue) {
    Signal<std::string> values;
    const auto taking = [this](std::string text) { heard.push_back(std::move(text)); };
    const auto first = values.subscribe(taking);
    const auto second = values.subscribe(taking);
    const std::string text = "a text too long to be kept in place";
    values.send(text);
    EXPECT_THAT(heard, ElementsAre(text, text));
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

TEST_F(SignalTest, AMovedSubscriptionEndsWhatItReplacesAndMayOutliveTheSignal) {
    auto sender = std::make_unique<Signal<>>();
    auto original = sender->subscribe(noting("one"));
    auto replaced = sender->subscribe(noting("two"));
    replaced = std::move(original);
    original.reset();
    sender->send();
    EXPECT_THAT(heard, ElementsAre("one"));
    sender.reset();
    replaced.reset();
}

}  // namespace
}  // namespace quorvane
