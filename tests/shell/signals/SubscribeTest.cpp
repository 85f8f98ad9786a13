#include "shell/signals/Subscribe.h"

#include "platform/simulated/SimulatedRunLoop.h"
#include "shell/signals/Keeps.h"
#include "shell/support/Offscreen.h"

#include <QWidget>
#include <gmock/gmock.h>
#include <vector>

namespace quorvane {
namespace {

struct State {
    Signal<int> told;
};

/// Speaks with its last breaths, as one does that loses the focus.
class Part : public QWidget {
public:
    Part(State& state, QWidget* parent) : QWidget(parent), state_(state) {}
    ~Part() override { state_.told.send(2); }

protected:
    void hideEvent(QHideEvent*) override { state_.told.send(3); }

private:
    State& state_;
};

class Page : private Keeps<State>, public QWidget {
public:
    Page(Signal<int>& other, std::vector<int>& heard) : Keeps(std::make_unique<State>()) {
        new Part(*parts_, this);
        subscribe(parts_->told, *this, [&heard](int number) { heard.push_back(number); });
        subscribe(other, *this, [&heard](int number) { heard.push_back(number); });
    }
};

TEST(SubscribeTest, AWidgetHearsUntilItGoesAndItsPartsMaySpeakToTheEnd) {
    needApplication();
    Signal<int> other;
    std::vector<int> heard;
    auto page = std::make_unique<Page>(other, heard);
    page->show();
    other.send(1);
    page.reset();
    other.send(4);
    EXPECT_THAT(heard, testing::ElementsAre(1));
    EXPECT_EQ(other.listeners(), 0U);
}

TEST(SubscribeTest, WhatIsPutOffIsForWhoIsThereThen) {
    platform::SimulatedRunLoop runLoop(Date{});
    std::vector<int> done;
    QObject stays;
    auto goes = std::make_unique<QObject>();
    postFor(stays, runLoop, [&done] { done.push_back(1); });
    postFor(*goes, runLoop, [&done] { done.push_back(2); });
    goes.reset();
    runLoop.runPosted();
    EXPECT_THAT(done, testing::ElementsAre(1));
}

}  // namespace
}  // namespace quorvane
