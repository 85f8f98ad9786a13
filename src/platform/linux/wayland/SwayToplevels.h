#pragma once

#include "platform/linux/wayland/SwayIpc.h"
#include "platform/linux/wayland/WlrToplevels.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace quorvane::platform {

/// The windows of sway with their processes, which the protocol of wlroots doesn't tell and sway's IPC does. What is in
/// front the protocol alone decides: a lock screen takes the focus there and not from sway's containers.
class SwayToplevels final : public SettledToplevels {
public:
    /// `ipcPath` is where SWAYSOCK says that sway listens; its windows are known without processes where it doesn't.
    SwayToplevels(RunLoop& runLoop, WaylandConnection& connection, std::string ipcPath);

    [[nodiscard]] Channel channel() const override;

private:
    [[nodiscard]] bool knowsProcesses() const { return ipc_ && ipc_->isConnected(); }
    [[nodiscard]] std::optional<ToplevelWindow> focused() const;
    [[nodiscard]] std::int64_t onlyProcessOf(const std::string& appId) const;
    void connectIpc();
    void hear(SwayIpc::Message kind, const QJsonObject& content);
    void noteTree(const QJsonObject& node);
    void noteContainer(const QJsonObject& container);
    void evaluate();
    void tell();

    RunLoop& runLoop_;
    WaylandConnection& connection_;
    std::string ipcPath_;
    WlrToplevels windows_;
    std::map<std::int64_t, ToplevelWindow> containers_;  ///< those with a window, by sway's number
    std::int64_t focused_ = 0;                           ///< the number of a container, with a window or without
    std::unique_ptr<SwayIpc> ipc_;
    std::unique_ptr<WorkItem> otherWord_;  ///< while it is waited for
    Subscription told_;
    Subscription connected_;
    Subscription lost_;
};

}  // namespace quorvane::platform
