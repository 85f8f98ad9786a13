#include "platform/linux/wayland/SwayToplevels.h"

#include <QJsonArray>
#include <QJsonObject>
#include <utility>

namespace quorvane::platform {
namespace {

/// Protocol and IPC tell of the same change within a millisecond, in any order. A switch is told of with its process
/// or, if this much has passed, without.
constexpr Seconds untilOneWordCounts = 0.02s;

ToplevelWindow windowOf(const QJsonObject& container) {
    const auto appId = container["app_id"];
    return {.appId = (appId.isString() ? appId : container["window_properties"]["class"]).toString().toStdString(),
            .title = container["name"].toString().toStdString(),
            .processIdentifier = container["pid"].toInteger()};
}

}  // namespace

SwayToplevels::SwayToplevels(RunLoop& runLoop, WaylandConnection& connection, std::string ipcPath)
    : SettledToplevels(&runLoop, 0s), runLoop_(runLoop), connection_(connection), ipcPath_(std::move(ipcPath)),
      windows_(connection), told_(windows_.observe([this] { evaluate(); })),
      connected_(connection.observeConnected([this] { connectIpc(); })), lost_(connection.observeLost([this] {
          ipc_.reset();
          evaluate();
      })) {
    tell();
}

void SwayToplevels::connectIpc() {
    containers_.clear();
    ipc_ = std::make_unique<SwayIpc>(
        ipcPath_, connection_.compositor(),
        [this](SwayIpc::Message kind, const QJsonObject& content) { hear(kind, content); }, [this] { evaluate(); });
    // The tree comes after the promise of events, so that none is missed between.
    ipc_->ask(SwayIpc::Message::subscribe, R"(["window"])");
    ipc_->ask(SwayIpc::Message::tree);
    ipc_->settle();
}

void SwayToplevels::hear(SwayIpc::Message kind, const QJsonObject& content) {
    if (kind == SwayIpc::Message::tree) {
        containers_.clear();
        noteTree(content);
    } else if (kind == SwayIpc::Message::windowEvent) {
        const auto container = content["container"].toObject();
        const auto change = content["change"];
        if (change == "close")
            containers_.erase(container["id"].toInteger());
        else
            noteContainer(container);
        if (change == "focus") focused_ = container["id"].toInteger();
    }
    evaluate();
}

void SwayToplevels::noteTree(const QJsonObject& node) {
    if (node["focused"].toBool()) focused_ = node["id"].toInteger();
    noteContainer(node);
    for (const char* children : {"nodes", "floating_nodes"})
        for (const auto& child : node[children].toArray())
            noteTree(child.toObject());
}

void SwayToplevels::noteContainer(const QJsonObject& container) {
    if (auto window = windowOf(container); window.processIdentifier > 0)
        containers_.insert_or_assign(container["id"].toInteger(), std::move(window));
}

std::optional<ToplevelWindow> SwayToplevels::focused() const {
    const auto found = knowsProcesses() ? containers_.find(focused_) : containers_.end();
    return found != containers_.end() ? std::optional(found->second) : std::nullopt;
}

/// 0 where there are several.
std::int64_t SwayToplevels::onlyProcessOf(const std::string& appId) const {
    std::int64_t only = 0;
    for (const auto& [id, window] : containers_) {
        if (!knowsProcesses() || window.appId != appId) continue;
        if (only != 0 && only != window.processIdentifier) return 0;
        only = window.processIdentifier;
    }
    return only;
}

void SwayToplevels::evaluate() {
    const auto active = windows_.active();
    const auto focus = focused();
    const bool isSame = focus && active && focus->appId == active->appId && focus->title == active->title;
    if (isSame || !active || !knowsProcesses())
        tell();
    else if (!otherWord_)
        otherWord_ = runLoop_.after(untilOneWordCounts, [this] { tell(); });
}

void SwayToplevels::tell() {
    otherWord_.reset();
    auto active = windows_.active();
    auto all = windows_.all();
    const auto focus = focused();
    if (active && focus && focus->appId == active->appId) active->processIdentifier = focus->processIdentifier;
    for (ToplevelWindow& window : all)
        window.processIdentifier = onlyProcessOf(window.appId);
    settle(active, all);
}

Channel SwayToplevels::channel() const {
    auto channel = windows_.channel();
    if (knowsProcesses()) channel.name += " with sway's IPC";
    return channel;
}

}  // namespace quorvane::platform
