#include "platform/linux/bus/BusNames.h"

#include <algorithm>
#include <utility>

namespace quorvane::platform {
namespace {

constexpr Seconds patience = 0.25s;
constexpr Seconds firstRetry = 1s;
constexpr Seconds longestRetry = 30s;

}  // namespace

BusNames::BusNames(RunLoop& runLoop, std::vector<std::string> names)
    : runLoop_(runLoop), names_(std::move(names)), untilRetry_(firstRetry) {
    connect();
}

void BusNames::connect() {
    bus_ = std::make_unique<BusListener>(BoundedBusConnection::sessionAddress(), Deadline(patience));
    if (!bus_->isConnected()) return reconnectLater();
    heard_ = bus_->observe([this](const QDBusMessage& signal) { note(signal); });
    ended_ = bus_->observeEnd([this] {
        set({});
        reconnectLater();
    });
    bus_->hear("org.freedesktop.DBus", "NameOwnerChanged");
    for (const std::string& name : names_)
        bus_->listen(BusListener::ownerRule(QString::fromStdString(name)));
    const auto answer = bus_->call(BusListener::busQuestion("ListNames", {}), Deadline(patience));
    if (!BoundedBusConnection::isAnswer(answer, "as")) return reconnectLater();
    untilRetry_ = firstRetry;
    const auto all = answer.arguments().constFirst().toStringList();
    std::set<std::string> owned;
    for (const std::string& name : names_)
        if (all.contains(QString::fromStdString(name))) owned.insert(name);
    set(std::move(owned));
}

void BusNames::reconnectLater() {
    retry_ = runLoop_.after(untilRetry_, [this] { connect(); });
    untilRetry_ = std::min(untilRetry_ * 2, longestRetry);
}

void BusNames::note(const QDBusMessage& signal) {
    if (signal.service() != u"org.freedesktop.DBus" || signal.signature() != u"sss") return;
    const auto name = signal.arguments().at(0).toString().toStdString();
    if (std::find(names_.begin(), names_.end(), name) == names_.end()) return;
    auto owned = owned_;
    if (signal.arguments().at(2).toString().isEmpty())
        owned.erase(name);
    else
        owned.insert(name);
    set(std::move(owned));
}

void BusNames::set(std::set<std::string> owned) {
    if (owned == owned_) return;
    owned_ = std::move(owned);
    changed_.send();
}

}  // namespace quorvane::platform
