#pragma once

#include "platform/linux/accessibility/AtspiMessages.h"
#include "platform/linux/bus/BoundedBusConnection.h"

#include <QDBusMessage>
#include <chrono>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>

namespace quorvane::platform {

/// The accessibility bus and what is known of the applications on it. From any thread.
///
/// Who did not answer in time is not asked again for 2 s; all of its elements fail at once. This process is never asked
/// about itself: while it waits it could not answer.
class AtspiConnection {
public:
    AtspiConnection(const QString& address, const Deadline& deadline);

    [[nodiscard]] bool isConnected() const { return bus_.isConnected(); }

    /// The answer of the element's application, or an error message.
    [[nodiscard]] QDBusMessage ask(const AtspiReference& element, const char* interface, const char* method,
                                   const QVariantList& arguments, const Deadline& deadline);

    /// The process behind a connection's name (":1.7"); none if the bus does not know it.
    [[nodiscard]] std::optional<std::int64_t> process(const QString& name, const Deadline& deadline);

private:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] bool isSilent(const QString& name);
    void noteAnswer(const QString& name, const QDBusMessage& answer);

    BoundedBusConnection bus_;
    std::mutex mutex_;  ///< guards the maps; the bus gives a name of the form ":1.7" only once
    std::map<QString, std::int64_t> processes_;
    std::map<QString, Clock::time_point> silentUntil_;
};

}  // namespace quorvane::platform
