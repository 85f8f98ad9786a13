#include "platform/linux/gnome/MutterReturnSource.h"

#include "base/Weak.h"

#include <QDBusError>
#include <optional>
#include <utility>

namespace quorvane::platform {
namespace {

constexpr Seconds patienceForMutter = 30s;  // nobody waits
constexpr Seconds justNow = 1s;

}  // namespace

class MutterReturnSource::InputWatch final : public ReturnWatch {
public:
    InputWatch(BusListener& bus, std::function<void()> returned)
        : bus_(bus), returned_(std::move(returned)),
          heard_(bus.observe([this](const QDBusMessage& signal) { hear(signal); })) {
        arm();
    }
    InputWatch(const InputWatch&) = delete;
    InputWatch& operator=(const InputWatch&) = delete;
    ~InputWatch() override {
        if (id_) bus_.tell(MutterIdleSource::question("RemoveWatch", {*id_}));
    }

private:
    /// One that is given up before Mutter has numbered it lasts until the next input, and nobody hears of it.
    void arm() {
        bus_.ask(MutterIdleSource::question("AddUserActiveWatch"), patienceForMutter,
                 [weak = weak_.handle()](const QDBusMessage& answer) {
                     auto* self = weak.get();
                     if (self == nullptr) return;
                     if (BoundedBusConnection::isAnswer(answer, "u"))
                         self->id_ = answer.arguments().constFirst().toUInt();
                     else if (QDBusError(answer).type() == QDBusError::NoReply)
                         self->arm();  // it hangs, and may go on
                 });
        // Nobody tells of an input that was before.
        bus_.ask(MutterIdleSource::question("GetIdletime"), patienceForMutter,
                 [weak = weak_.handle()](const QDBusMessage& answer) {
                     const auto idle = MutterIdleSource::idleTime(answer);
                     if (auto* self = weak.get(); self != nullptr && idle && *idle < justNow) self->call();
                 });
    }

    void hear(const QDBusMessage& signal) {
        if (signal.member() == u"WatchFired" && signal.signature() == u"u") {
            if (id_ != signal.arguments().constFirst().toUInt()) return;
            id_.reset();
            call();
        } else if (signal.member() == u"NameOwnerChanged" && signal.signature() == u"sss" &&
                   signal.arguments().at(0).toString() == QLatin1String(MutterIdleSource::service)) {
            id_.reset();  // watches end with the shell
            if (!signal.arguments().at(2).toString().isEmpty()) arm();
        }
    }

    void call() {
        // It may take this watch with it.
        if (const auto returned = std::exchange(returned_, nullptr)) returned();
    }

    BusListener& bus_;
    std::function<void()> returned_;
    std::optional<uint> id_;
    Subscription heard_;
    WeakSource<InputWatch> weak_{*this};
};

MutterReturnSource::MutterReturnSource(MutterIdleSource& idle) : idle_(idle) {}

std::unique_ptr<ReturnWatch> MutterReturnSource::watch(std::function<void()> returned) {
    if (!idle_.isThere()) return nullptr;  // who is slow will answer yet
    return std::make_unique<InputWatch>(idle_.bus(), std::move(returned));
}

Channel MutterReturnSource::channel() const {
    auto channel = idle_.channel();
    channel.question = "return from an absence";
    return channel;
}

}  // namespace quorvane::platform
