#pragma once

#include "platform/ForegroundSource.h"

#include <map>

namespace quorvane::platform {

/// A foreground that a script sets.
class SimulatedForeground : public ForegroundSource {
public:
    [[nodiscard]] std::optional<ForegroundApplication> frontmostApplication() override;
    [[nodiscard]] std::optional<std::string> frontmostWindowTitle() override;
    Subscription observeActivation(std::function<void(const std::optional<ForegroundApplication>&)> activated) override;
    Subscription observeVacancy(std::function<void()> vacated) override;
    [[nodiscard]] Channel channel() const override { return channel_; }

    void setChannel(Channel channel) { channel_ = std::move(channel); }

    void setFrontmost(std::optional<ForegroundApplication> application) { frontmost_ = std::move(application); }
    void sendVacancy() { vacated_.send(); }
    void sendActivation(const std::optional<ForegroundApplication>& application) { activated_.send(application); }

    /// Remembered for the application, whether it is in front or not.
    void setWindowTitle(const ForegroundApplication& application, std::optional<std::string> title);
    [[nodiscard]] const std::optional<ForegroundApplication>& underlying() const { return frontmost_; }

    /// While covered, the login window is the answer.
    void setCovered(bool covered) { isCovered_ = covered; }

    [[nodiscard]] int observers() const { return static_cast<int>(activated_.listeners()); }

private:
    Channel channel_{
        .question = "front window", .name = "simulated", .isAvailable = true, .gives = Sight::applications};
    std::optional<ForegroundApplication> frontmost_;
    std::map<std::string, std::string> titles_;  ///< by bundle identifier, else by name
    bool isCovered_ = false;
    Signal<const std::optional<ForegroundApplication>&> activated_;
    Signal<> vacated_;
};

}  // namespace quorvane::platform
