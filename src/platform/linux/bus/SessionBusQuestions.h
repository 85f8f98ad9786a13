#pragma once

#include "platform/linux/bus/BoundedBusConnection.h"

#include <QStringList>
#include <QVariant>
#include <memory>
#include <sys/types.h>

namespace quorvane::platform {

/// Questions to programs on the bus of the user's session within one deadline. Each answer comes within `patience`
/// or not at all, and nothing is started for a question. Connects with the first one; for one thread.
class SessionBusQuestions {
public:
    explicit SessionBusQuestions(const Deadline& deadline, Seconds patience = 0.3s)
        : deadline_(deadline), patience_(patience) {}

    /// Does the bus answer?
    [[nodiscard]] bool isThere();

    /// The owned names that begin so, sorted.
    [[nodiscard]] QStringList names(const QString& prefix);

    /// The process that owns the name; 0 if nobody does.
    [[nodiscard]] pid_t processOf(const QString& name);

    /// A property as it came; invalid without an answer. Ask only for names that somebody owns.
    [[nodiscard]] QVariant property(const QString& service, const QString& path, const QString& interface,
                                    const QString& property);

    /// The first value of a method's answer; invalid without one.
    [[nodiscard]] QVariant answer(const QString& service, const QString& path, const QString& interface,
                                  const QString& method, const QVariantList& arguments);

private:
    [[nodiscard]] bool connects();
    [[nodiscard]] QVariant askBus(const char* method, const QVariantList& arguments = {});

    Deadline deadline_;
    Seconds patience_;
    std::unique_ptr<BoundedBusConnection> bus_;
};

}  // namespace quorvane::platform
