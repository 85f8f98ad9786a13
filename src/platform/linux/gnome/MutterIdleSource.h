#pragma once

#include "platform/IdleSource.h"
#include "platform/RunLoop.h"
#include "platform/linux/bus/BusListener.h"

#include <optional>
#include <string>

namespace quorvane::platform {

/// How long nobody has touched anything, as Mutter knows it, which GNOME Shell is made on. Each question waits 0.25 s
/// at most; who did not answer is left alone for a while, in which the last answer grows as time does.
class MutterIdleSource final : public IdleSource {
public:
    static constexpr const char* service = "org.gnome.Mutter.IdleMonitor";

    explicit MutterIdleSource(RunLoop& runLoop);

    [[nodiscard]] Seconds secondsSinceLastInput() override;
    [[nodiscard]] Channel channel() const override;

    /// Is Mutter on the bus, though it may be slow?
    [[nodiscard]] bool isThere() const { return isThere_; }

    /// What leads to Mutter, and a question to its monitor.
    [[nodiscard]] BusListener& bus() { return bus_; }
    [[nodiscard]] static QDBusMessage question(const char* method, const QVariantList& arguments = {});

    /// What it answers to "GetIdletime"; none if that is no answer.
    [[nodiscard]] static std::optional<Seconds> idleTime(const QDBusMessage& answer);

private:
    MutterIdleSource(RunLoop& runLoop, const Deadline& deadline);
    void ask(const Deadline& deadline);
    void hear(const QDBusMessage& signal);

    RunLoop& runLoop_;
    BusListener bus_;
    std::optional<Seconds> lastInput_;  ///< on the clock that never steps
    Seconds silentUntil_{};
    bool isThere_ = false;
    std::string problem_;
    Subscription heard_;
};

}  // namespace quorvane::platform
