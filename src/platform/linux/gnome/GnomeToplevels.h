#pragma once

#include "platform/RunLoop.h"
#include "platform/linux/bus/BusListener.h"
#include "platform/linux/bus/SignalFlood.h"
#include "platform/linux/windows/ToplevelWindows.h"

#include <QDBusMessage>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvane::platform {

/// The windows as our extension in GNOME Shell tells of them. Only who owns its name is believed, and of that only what
/// has the right types. Who tells too much is asked now and then instead. The lock screen turns the extension off, and
/// then nothing is in front. Of the windows behind the one with the focus no titles are told.
class GnomeToplevels final : public ToplevelWindows {
public:
    /// The name on the session bus that is there while the extension runs.
    static constexpr const char* service = "com.quorvane.Focus";

    explicit GnomeToplevels(RunLoop& runLoop);

    [[nodiscard]] std::optional<ToplevelWindow> active() const override { return told_.active; }
    [[nodiscard]] std::vector<ToplevelWindow> all() const override { return told_.all; }
    Subscription observe(std::function<void()> changed) override { return changed_.subscribe(std::move(changed)); }
    [[nodiscard]] Channel channel() const override;

    /// What the extension tells at one time.
    struct Told {
        std::optional<ToplevelWindow> active;
        std::vector<ToplevelWindow> all;
        friend bool operator==(const Told&, const Told&) = default;
    };

private:
    void hear(const QDBusMessage& signal);
    void setOwner(const QString& owner);
    void ask();
    void noteAnswer(const QDBusMessage& answer);
    [[nodiscard]] bool isTooMuch();
    void settle();
    void set(Told told);

    RunLoop& runLoop_;
    QString owner_;  ///< the connection that owns the name; empty: nobody
    std::string problem_;
    Told told_;
    std::optional<Told> latest_;  ///< what holds once the batch is over
    SignalFlood flood_;
    bool isResting_ = false;  ///< from a flood: the bus passes on no changes
    Seconds untilRetry_;
    std::unique_ptr<WorkItem> rest_;
    std::unique_ptr<WorkItem> retry_;
    std::unique_ptr<WorkItem> settling_;
    Signal<> changed_;
    BusListener bus_;  // dies before what its callers touch
    Subscription heard_;
    Subscription ended_;
};

}  // namespace quorvane::platform
