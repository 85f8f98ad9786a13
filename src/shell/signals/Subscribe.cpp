#include "shell/signals/Subscribe.h"

#include <QPointer>

namespace quorvane {

void endWith(QObject& owner, Subscription subscription) {
    QObject::connect(&owner, &QObject::destroyed, [kept = std::move(subscription)]() mutable { kept.reset(); });
}

void postFor(QObject& owner, platform::RunLoop& runLoop, std::function<void()> work) {
    runLoop.post([alive = QPointer(&owner), act = std::move(work)] {
        if (alive) act();
    });
}

}  // namespace quorvane
