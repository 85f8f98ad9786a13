#pragma once

#include "base/Signal.h"
#include "platform/RunLoop.h"

#include <QObject>
#include <functional>
#include <utility>

/// How a widget hears of states: for as long as it lives, without a member for each signal. Main thread only.
namespace quorvane {

/// Ends the subscription with the object, before its children go.
void endWith(QObject& owner, Subscription subscription);

/// Calls the slot whenever the signal is sent, until the destructor of `owner` has run: what still happens while Qt
/// takes the rest apart, as when a child loses the focus, meets no half object. The signal may go first.
template <class Owner, class Slot, class... Args>
void subscribe(Signal<Args...>& signal, Owner& owner, Slot slot) {
    endWith(owner, signal.subscribe([object = static_cast<QObject*>(&owner), act = std::move(slot)](Args... args) {
        if (dynamic_cast<Owner*>(object) != nullptr) act(std::forward<Args>(args)...);
    }));
}

/// Does it in the loop's next turn, unless the object is gone by then.
void postFor(QObject& owner, platform::RunLoop& runLoop, std::function<void()> work);

}  // namespace quorvane
