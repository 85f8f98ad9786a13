#pragma once

#include <functional>
#include <sigc++/sigc++.h>
#include <utility>

namespace quorvane {

/// Keeps a listener registered; destroying or resetting it ends that, also while the signal is being sent.
/// It may outlive the signal.
class [[nodiscard]] Subscription {
public:
    Subscription() = default;
    explicit Subscription(const sigc::connection& connection) : connection_(connection) {}
    Subscription(Subscription&& other) noexcept : connection_(std::exchange(other.connection_, {})) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            reset();
            connection_ = std::exchange(other.connection_, {});
        }
        return *this;
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { reset(); }

    void reset() {
        connection_.disconnect();
        connection_ = {};
    }

private:
    sigc::connection connection_;
};

/// Tells its listeners that something happened, in the order in which they subscribed. Not thread safe: sender and
/// listeners live on one thread.
template <class... Args>
class Signal {
public:
    Signal() = default;
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    Subscription subscribe(std::function<void(Args...)> listener) {
        return Subscription(signal_.connect(std::move(listener)));
    }

    void send(Args... args) const { signal_.emit(std::forward<Args>(args)...); }

    /// How many listen. Not for listeners: while the signal is being sent, the number is too large.
    [[nodiscard]] std::size_t listeners() const { return signal_.size(); }

private:
    sigc::signal<void(Args...)> signal_;
};

}  // namespace quorvane
