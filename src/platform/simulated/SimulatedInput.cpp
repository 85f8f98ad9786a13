#include "platform/simulated/SimulatedInput.h"

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
