#pragma once

#include "platform/SettingsPanes.h"
#include "platform/SystemEvents.h"

#include <array>
#include <string>
#include <vector>

namespace quorvane::platform {

/// System events that a script sends.
class SimulatedSystemEvents : public SystemEvents {
public:
    Subscription observe(SystemEvent event, std::function<void()> happened) override;
    [[nodiscard]] std::vector<Channel> channels() const override;

    void noteInput() override { inputNoted.send(); }
    Signal<> inputNoted;

    void send(SystemEvent event) { signal(event).send(); }
    [[nodiscard]] int observers() const;

private:
    Signal<>& signal(SystemEvent event) { return signals_[static_cast<std::size_t>(event)]; }

    std::array<Signal<>, static_cast<std::size_t>(SystemEvent::screenUnlocked) + 1> signals_;
};

/// Settings panes that are only noted down.
class SimulatedSettingsPanes : public SettingsPanes {
public:
    [[nodiscard]] bool canOpen(const std::string& /*url*/) const override { return hasProgram; }
    void open(const std::string& url) override { opened_.push_back(url); }
    [[nodiscard]] const std::vector<std::string>& opened() const { return opened_; }

    bool hasProgram = true;

private:
    std::vector<std::string> opened_;
};

}  // namespace quorvane::platform
