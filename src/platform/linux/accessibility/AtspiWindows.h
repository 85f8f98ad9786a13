#pragma once

#include "platform/RunLoop.h"
#include "platform/linux/accessibility/AtspiMessages.h"
#include "platform/linux/bus/BusListener.h"
#include "platform/linux/bus/SignalFlood.h"
#include "platform/linux/windows/ToplevelWindows.h"

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <vector>

namespace quorvane::platform {

/// The windows on one accessibility bus, and which of them say that they are active. Some say so late and falsely, and
/// take it back at once; so the one that said it last counts of those that have not. Main thread only.
class AtspiWindows {
public:
    /// `settled` is called after what may have changed anything, `ended` when the bus has gone.
    AtspiWindows(RunLoop& runLoop, const QString& address, std::function<void()> settled, std::function<void()> ended);
    AtspiWindows(const AtspiWindows&) = delete;
    AtspiWindows& operator=(const AtspiWindows&) = delete;
    ~AtspiWindows() = default;

    [[nodiscard]] bool isConnected() const { return bus_.isConnected(); }

    /// Has the registry said which applications there are?
    [[nodiscard]] bool hasAnswered() const { return hasAnswered_; }

    /// Is all known of the windows that are active? Until then `active` is not to be believed.
    [[nodiscard]] bool isSettled() const;

    [[nodiscard]] std::optional<ToplevelWindow> active() const;
    [[nodiscard]] std::vector<ToplevelWindow> all() const;

private:
    struct Window {
        AtspiReference reference;
        bool isActive = false;
        bool isWindow = false;    ///< and no other element
        bool isKnown = false;     ///< is all answered that was asked about it?
        std::uint64_t since = 0;  ///< the later ones became active later
        int open = 0;             ///< questions about it without an answer
        ToplevelWindow told{};
    };
    using Found = std::list<Window>::iterator;
    using Take = void (*)(Window&, const QVariant&);

    void listen();
    void begin();
    void hear(const QDBusMessage& signal);
    void rest();
    [[nodiscard]] Found find(const QString& bus, const QString& path);
    Found add(const AtspiReference& reference);
    void setActive(const QString& bus, const QString& path, bool isActive);
    void setInactive(Window& window);
    void setTitle(const QDBusMessage& signal);
    void remove(const QDBusMessage& signal);
    void noteOwner(const QString& name, const QString& owner);
    void removeApplication(const QString& bus);
    void askForApplications();
    void askForWindows(const AtspiReference& application);
    void askForState(const AtspiReference& window);
    void askAbout(Window& window);
    void ask(Window& window, const QDBusMessage& question, const char* signature, Take take);
    void noteAnswered(Found window);
    void askAgain();

    RunLoop& runLoop_;
    std::function<void()> settled_;
    std::list<Window> windows_;
    std::uint64_t activations_ = 0;
    SignalFlood flood_;
    bool isResting_ = false;  ///< from a flood: the bus passes nothing on
    bool hasAnswered_ = false;
    std::unique_ptr<WorkItem> rest_;
    std::unique_ptr<WorkItem> again_;
    BusListener bus_;  // dies before what its callers touch
    Subscription heard_;
    Subscription ended_;
};

}  // namespace quorvane::platform
