#include "platform/linux/session/ChosenIdle.h"

#include "platform/linux/gnome/MutterReturnSource.h"

#include <utility>

namespace quorvane::platform {
namespace {

class LastingWatch final : public ReturnWatch {
public:
    LastingWatch(ChosenIdle& idle, std::function<void()> returned)
        : returned_(std::move(returned)), changed_(idle.observe([this, &idle] { wait(idle); })) {
        wait(idle);
    }

    /// Does anybody tell?
    [[nodiscard]] bool isWaiting() const { return inner_ != nullptr; }

private:
    void wait(ChosenIdle& idle) {
        inner_.reset();
        if (!returned_) return;  // that has been
        inner_ = idle.returns().watch([this] {
            // It may take this watch with it.
            if (const auto returned = std::exchange(returned_, nullptr)) returned();
        });
    }

    std::function<void()> returned_;
    std::unique_ptr<ReturnWatch> inner_;
    Subscription changed_;
};

}  // namespace

struct ChosenIdle::Mutter {
    explicit Mutter(RunLoop& runLoop) : idle(runLoop), returns(idle) {}

    MutterIdleSource idle;
    MutterReturnSource returns;
};

ChosenIdle::ChosenIdle(RunLoop& runLoop, WaylandConnection& connection, BusNames& names)
    : runLoop_(runLoop), names_(names), wayland_(runLoop, connection), waylandReturns_(runLoop, wayland_),
      named_(names.observe([this] { choosing_ = runLoop_.after(0s, [this] { choose(); }); })) {
    choose();
}

ChosenIdle::~ChosenIdle() = default;

void ChosenIdle::choose() {
    const bool isMutterThere = names_.isOwned(MutterIdleSource::service);
    if (isMutterThere == (mutter_ != nullptr)) return;
    const auto former = std::exchange(mutter_, isMutterThere ? std::make_unique<Mutter>(runLoop_) : nullptr);
    changed_.send();
}

Seconds ChosenIdle::secondsSinceLastInput() {
    return mutter_ ? mutter_->idle.secondsSinceLastInput() : wayland_.secondsSinceLastInput();
}

Channel ChosenIdle::channel() const {
    return mutter_ ? mutter_->idle.channel() : wayland_.channel();
}

ReturnSource& ChosenIdle::returns() {
    return mutter_ ? static_cast<ReturnSource&>(mutter_->returns) : waylandReturns_;
}

std::unique_ptr<ReturnWatch> ChosenReturns::watch(std::function<void()> returned) {
    auto watch = std::make_unique<LastingWatch>(idle_, std::move(returned));
    if (!watch->isWaiting()) return nullptr;
    return watch;
}

Channel ChosenReturns::channel() const {
    return idle_.returns().channel();
}

}  // namespace quorvane::platform
