#pragma once

#include "platform/ApplicationIcons.h"
#include "platform/SettingsPanes.h"
#include "platform/SystemEvents.h"

#include <array>
#include <map>
#include <optional>
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

/// Icons that a script names.
class SimulatedApplicationIcons : public ApplicationIcons {
public:
    [[nodiscard]] std::optional<std::string> icon(const std::string& bundleIdentifier) const override {
        const auto found = icons.find(bundleIdentifier);
        return found == icons.end() ? std::nullopt : std::optional(found->second);
    }

    std::map<std::string, std::string> icons;
};

}  // namespace quorvane::platform
