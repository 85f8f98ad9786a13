#include "platform/linux/wayland/WaylandToplevels.h"

#include <utility>

namespace quorvane::platform {

void WaylandToplevels::Windows::setActive(Window& window, bool isActive) {
    if (isActive && !window.isActive) window.activation = ++activations_;
    window.isActive = isActive;
}

void WaylandToplevels::Windows::close(const Window& closed) {
    windows_.remove_if([&](const auto& window) { return window.get() == &closed; });
}

std::optional<ToplevelWindow> WaylandToplevels::Windows::active() const {
    const Window* newest = nullptr;
    for (const auto& window : windows_)
        if (window->isWhole && window->isActive && (!newest || window->activation > newest->activation))
            newest = window.get();
    return newest != nullptr ? std::optional(newest->told) : std::nullopt;
}

std::vector<ToplevelWindow> WaylandToplevels::Windows::all() const {
    std::vector<ToplevelWindow> all;
    for (const auto& window : windows_)
        if (window->isWhole) all.push_back(window->told);
    return all;
}

WaylandToplevels::WaylandToplevels(WaylandConnection& connection, Seconds patience,
                                   std::function<std::unique_ptr<Windows>()> bind)
    : SettledToplevels(connection.runLoop(), patience),
      connected_(connection.observeConnected([this, bind = std::move(bind)] { windows_ = bind(); })),
      lost_(connection.observeLost([this] {
          windows_.reset();
          lose();
      })),
      settled_(connection.observeSettled([this] {
          if (windows_) settle(windows_->active(), windows_->all());
      })) {}

}  // namespace quorvane::platform
