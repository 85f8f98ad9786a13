#include "platform/simulated/SimulatedInput.h"

#include <utility>

namespace quorvane::platform {
namespace {

Channel channelFor(const char* question, bool isRefused) {
    return {.question = question,
            .name = "simulated",
            .isAvailable = !isRefused,
            .reason = isRefused ? "refused by the script" : ""};
}

class Monitor : public PointerEventMonitor {
public:
    explicit Monitor(Subscription subscription) : subscription_(std::move(subscription)) {}

private:
    Subscription subscription_;
};

}  // namespace

Seconds SimulatedIdle::secondsSinceLastInput() {
    return reading_.value_or(runLoop_.uptime() - lastInput_);
}

Channel SimulatedIdle::channel() const {
    return channelFor("system idle time", false);
}

/// Calls once. The call may take it away, or the whole tracker.
class SimulatedReturns::Watch : public ReturnWatch {
public:
    Watch(Signal<>& input, std::function<void()> returned)
        : returned_(std::move(returned)), input_(input.subscribe([this] {
              const auto call = std::exchange(returned_, nullptr);
              const auto done = std::move(input_);
              if (call) call();
          })) {}

private:
    std::function<void()> returned_;
    Subscription input_;
};

std::unique_ptr<ReturnWatch> SimulatedReturns::watch(std::function<void()> returned) {
    return isRefused_ ? nullptr : std::make_unique<Watch>(input_, std::move(returned));
}

Channel SimulatedReturns::channel() const {
    return channelFor("return from an absence", isRefused_);
}

/// Hears only while it is both attached and enabled, as the real ones do.
class SimulatedKeys::Tap : public KeyEventTap {
public:
    Tap(SimulatedKeys& keys, KeyEvents events, std::function<void()> heard)
        : keys_(keys), events_(events), heard_(std::move(heard)), taps_(keys.taps_) {
        ++*taps_;
    }
    Tap(const Tap&) = delete;
    Tap& operator=(const Tap&) = delete;
    ~Tap() override { --*taps_; }

    bool attach() override {
        if (keys_.isAttachRefused_) return false;
        isAttached_ = true;
        listen();
        return true;
    }

    void enable(bool enabled) override {
        isEnabled_ = enabled;
        listen();
    }

private:
    void listen() {
        pressed_.reset();
        released_.reset();
        if (!isAttached_ || !isEnabled_) return;
        pressed_ = keys_.pressed_.subscribe(heard_);
        if (events_ == KeyEvents::keyDownAndUp) released_ = keys_.released_.subscribe(heard_);
    }

    SimulatedKeys& keys_;
    KeyEvents events_;
    std::function<void()> heard_;
    std::shared_ptr<int> taps_;  // a tap may outlive the desktop
    bool isAttached_ = false;
    bool isEnabled_ = false;
    Subscription pressed_;
    Subscription released_;
};

std::unique_ptr<KeyEventTap> SimulatedKeys::createTap(KeyEvents events, std::function<void()> heard) {
    if (isRefused_ || (isDownAndUpRefused_ && events == KeyEvents::keyDownAndUp)) return nullptr;
    return std::make_unique<Tap>(*this, events, std::move(heard));
}

Channel SimulatedKeys::channel() const {
    return channelFor("key events", isRefused_);
}

std::unique_ptr<PointerEventMonitor> SimulatedPointer::addGlobalMonitor(Heard heard) {
    return isGlobalRefused_ ? nullptr : std::make_unique<Monitor>(global_.subscribe(std::move(heard)));
}

std::unique_ptr<PointerEventMonitor> SimulatedPointer::addLocalMonitor(Heard heard) {
    return isLocalRefused_ ? nullptr : std::make_unique<Monitor>(local_.subscribe(std::move(heard)));
}

Channel SimulatedPointer::channel() const {
    return channelFor("button events", isGlobalRefused_);
}

void SimulatedPointer::act(bool overOwnWindow) {
    global_.send(position_);
    if (overOwnWindow) local_.send(position_);
}

}  // namespace quorvane::platform
