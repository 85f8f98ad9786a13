#pragma once

#include "platform/IdleSource.h"
#include "platform/RunLoop.h"
#include "platform/linux/bus/BusListener.h"

#include <optional>
#include <string>

namespace quorvane::platform {

/// How long nobody has touched anything, as Mutter knows it, which GNOME Shell is made on. Each question waits 0.25 s
/// at most; who did not answer is left alone for a while, in which the last answer grows as time does. So it does in a
/// pause, whose end Mutter tells.
class MutterIdleSource final : public IdleSource {
public:
    static constexpr const char* service = "org.gnome.Mutter.IdleMonitor";

    /// So long without input is a pause.
    static constexpr Seconds pause = 20s;

    explicit MutterIdleSource(RunLoop& runLoop, Seconds leastPause = pause);

    [[nodiscard]] Seconds secondsSinceLastInput() override;
    [[nodiscard]] Channel channel() const override;

    /// Is Mutter on the bus, though it may be slow?
    [[nodiscard]] bool isThere() const { return isThere_; }

    /// What leads to Mutter and hears of its watches and its end, and a question to its monitor.
    [[nodiscard]] BusListener& bus() { return bus_; }
    [[nodiscard]] static QDBusMessage question(const char* method, const QVariantList& arguments = {});

    /// What it answers to "GetIdletime"; none if that is no answer.
    [[nodiscard]] static std::optional<Seconds> idleTime(const QDBusMessage& answer);

private:
    MutterIdleSource(RunLoop& runLoop, Seconds leastPause, const Deadline& deadline);
    void ask(const Deadline& deadline);
    void watchPause();
    void hear(const QDBusMessage& signal);
    void forgetPause();

    RunLoop& runLoop_;
    Seconds leastPause_;
    BusListener bus_;
    std::optional<Seconds> lastInput_;  ///< on the clock that never steps
    Seconds silentUntil_{};
    bool isThere_ = false;
    std::optional<uint> watch_;  ///< goes off with the next input
    bool isWatching_ = false;    ///< asked for, and from the answer on `watch_`
    Seconds pauseUntil_{};       ///< until then nobody has to be asked, unless input is told
    std::string problem_;
    Subscription heard_;
};

}  // namespace quorvane::platform
