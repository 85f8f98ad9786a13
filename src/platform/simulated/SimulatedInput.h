#pragma once

#include "base/Signal.h"
#include "platform/IdleSource.h"
#include "platform/KeyEventSource.h"
#include "platform/PointerEventSource.h"
#include "platform/ReturnSource.h"
#include "platform/simulated/SimulatedRunLoop.h"

#include <optional>

namespace quorvane::platform {

/// How long the script has touched nothing. Setting the clock does not change it, as on a real desktop.
class SimulatedIdle : public IdleSource {
public:
    explicit SimulatedIdle(const SimulatedRunLoop& runLoop) : runLoop_(runLoop), lastInput_(runLoop.uptime()) {}

    [[nodiscard]] Seconds secondsSinceLastInput() override;
    [[nodiscard]] Channel channel() const override;

    void noteInput() { lastInput_ = runLoop_.uptime(); }

    /// The answer from now on, negative ones included; none: the natural one.
    void setReading(std::optional<Seconds> reading) { reading_ = reading; }

private:
    const SimulatedRunLoop& runLoop_;
    Seconds lastInput_;  ///< as uptime
    std::optional<Seconds> reading_;
};

/// Hears of the script's input.
class SimulatedReturns : public ReturnSource {
public:
    [[nodiscard]] std::unique_ptr<ReturnWatch> watch(std::function<void()> returned) override;
    [[nodiscard]] Channel channel() const override;

    void noteInput() { input_.send(); }
    void refuse(bool refused) { isRefused_ = refused; }
    [[nodiscard]] int waiting() const { return static_cast<int>(input_.listeners()); }

private:
    class Watch;

    Signal<> input_;
    bool isRefused_ = false;
};

/// A keyboard that a script presses.
class SimulatedKeys : public KeyEventSource {
public:
    [[nodiscard]] std::unique_ptr<KeyEventTap> createTap(KeyEvents events, std::function<void()> heard) override;
    [[nodiscard]] Channel channel() const override;

    void press() { pressed_.send(); }
    void release() { released_.send(); }

    void refuse(bool refused) { isRefused_ = refused; }
    void refuseDownAndUp(bool refused) { isDownAndUpRefused_ = refused; }
    void refuseAttach(bool refused) { isAttachRefused_ = refused; }

    [[nodiscard]] int taps() const { return *taps_; }

private:
    class Tap;

    Signal<> pressed_;
    Signal<> released_;
    bool isRefused_ = false;
    bool isDownAndUpRefused_ = false;
    bool isAttachRefused_ = false;
    std::shared_ptr<int> taps_ = std::make_shared<int>(0);  ///< how many are alive
};

/// A pointer that a script moves.
class SimulatedPointer : public PointerEventSource {
public:
    [[nodiscard]] std::unique_ptr<PointerEventMonitor> addGlobalMonitor(Heard heard) override;
    [[nodiscard]] std::unique_ptr<PointerEventMonitor> addLocalMonitor(Heard heard) override;
    [[nodiscard]] Point pointerPosition() override { return position_; }
    [[nodiscard]] Channel channel() const override;

    void moveTo(Point position) { position_ = position; }

    /// A button or the wheel; only what happens over our own windows reaches local monitors too.
    void act(bool overOwnWindow);

    void refuseGlobal(bool refused) { isGlobalRefused_ = refused; }
    void refuseLocal(bool refused) { isLocalRefused_ = refused; }

    [[nodiscard]] int globalMonitors() const { return static_cast<int>(global_.listeners()); }
    [[nodiscard]] int localMonitors() const { return static_cast<int>(local_.listeners()); }

private:
    Point position_;
    Signal<Point> global_;
    Signal<Point> local_;
    bool isGlobalRefused_ = false;
    bool isLocalRefused_ = false;
};

}  // namespace quorvane::platform
