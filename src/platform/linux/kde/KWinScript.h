#pragma once

#include "platform/RunLoop.h"
#include "platform/linux/bus/DBusConnection.h"

#include <QByteArray>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusVirtualObject>
#include <QTemporaryFile>
#include <functional>
#include <memory>
#include <string>

namespace quorvane::platform {

/// Our script inside KWin, of any version that runs scripts. It is loaded whenever there is a KWin on the session bus,
/// and taken out at the end. It finds us by the unique name of our connection, which nobody else can own, and nobody
/// but KWin is listened to. Nothing here waits for KWin, but the end, for a moment.
class KWinScript final : private QDBusVirtualObject {
public:
    /// `show` gets a picture of the windows in JSON each time they change, `lose` is called when KWin has gone.
    KWinScript(RunLoop& runLoop, std::function<void(const QByteArray& picture)> show, std::function<void()> lose);
    KWinScript(const KWinScript&) = delete;
    KWinScript& operator=(const KWinScript&) = delete;
    ~KWinScript() override;

    /// Why it tells nothing; empty while it does.
    [[nodiscard]] std::string problem() const;

private:
    void follow(const QString& owner);
    void load();
    void run(const QStringList& paths);
    void fail(const QString& problem);
    void call(const QString& path, const QString& interface, const QString& method, const QVariantList& arguments,
              const std::function<void(const QDBusMessage&)>& answered);
    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
    void answer(const QDBusMessage& message);

    RunLoop& runLoop_;
    std::function<void(const QByteArray&)> show_;
    std::function<void()> lose_;
    DBusConnection session_;
    QDBusServiceWatcher watcher_;
    QString name_;
    QString owner_;  ///< KWin's unique name; empty while it isn't there
    QString problem_;
    int attempt_ = 0;                       ///< to load the script
    std::unique_ptr<QTemporaryFile> file_;  ///< while KWin reads it
    Seconds untilRetry_{};
    std::unique_ptr<WorkItem> retry_;
    Seconds countedSince_{};  ///< as uptime
    int answers_ = 0;         ///< since then
    std::unique_ptr<WorkItem> lateAnswer_;
};

}  // namespace quorvane::platform
