#pragma once

#include "platform/PointerEventSource.h"
#include "platform/linux/x11/X11Connection.h"

#include <memory>

namespace quorvane::platform {

/// Button presses and scrolling of all applications by raw events of the X Input extension 2.2. Motion is not asked
/// for, so that a moving pointer does not wake the process.
class XInputPointerEventSource final : public PointerEventSource {
public:
    explicit XInputPointerEventSource(X11Connection& x11);
    XInputPointerEventSource(const XInputPointerEventSource&) = delete;
    XInputPointerEventSource& operator=(const XInputPointerEventSource&) = delete;
    ~XInputPointerEventSource() override;

    [[nodiscard]] std::unique_ptr<PointerEventMonitor> addGlobalMonitor(Heard heard) override;

    /// None: this process knows of no windows of its own here.
    [[nodiscard]] std::unique_ptr<PointerEventMonitor> addLocalMonitor(Heard heard) override;
    [[nodiscard]] Point pointerPosition() override;
    [[nodiscard]] Channel channel() const override;

private:
    struct Listening;

    X11Connection& x11_;
    bool isOffered_ = false;
    std::shared_ptr<Listening> listening_;  ///< monitors may outlive this object
};

}  // namespace quorvane::platform
