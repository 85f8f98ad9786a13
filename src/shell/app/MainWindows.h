#pragma once

#include "base/Signal.h"
#include "shell/app/WindowHints.h"
#include "shell/state/ApplicationPresence.h"

#include <QPointer>
#include <QWidget>
#include <memory>

namespace quorvane {

/// The application's windows, of which there is one or none. Main thread only.
class MainWindows final : public ApplicationPresence {
public:
    MainWindows() = default;
    MainWindows(const MainWindows&) = delete;
    MainWindows& operator=(const MainWindows&) = delete;
    ~MainWindows() override;

    /// Shows a new window in front. It is deleted when it has been closed, at the latest with this object.
    void show(std::unique_ptr<QWidget> window);
    /// Deletes the window without asking it.
    void close();

    [[nodiscard]] ActivationPolicy activationPolicy() const override;
    void setActivationPolicy(ActivationPolicy policy) override;
    void activateIgnoringOtherApps() override;
    [[nodiscard]] std::size_t windowCount() const override { return window_ ? 1 : 0; }
    [[nodiscard]] bool hasVisibleWindows() const override;
    bool makeKeyAndOrderFront() override;

    Signal<> closed;  ///< the window is gone

private:
    WindowHints hints_;
    QPointer<QWidget> window_;
};

}  // namespace quorvane
