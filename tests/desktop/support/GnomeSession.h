#pragma once

#include "desktop/support/BusMock.h"
#include "desktop/support/ChildProcess.h"
#include "desktop/support/DesktopSession.h"
#include "desktop/support/LogindMock.h"

#include <QDBusConnection>
#include <QVariant>
#include <functional>
#include <memory>
#include <string>

namespace quorvane {

/// A session of GNOME without a screen, for one test, with real input and an extension that does what the test says. It
/// has begun when this has been made.
class GnomeSession {
public:
    [[nodiscard]] static bool isInstalled();

    /// `prepare` is called before the shell starts, in the session's environment.
    explicit GnomeSession(const std::function<void()>& prepare = [] {});
    ~GnomeSession();

    /// False where the shell hangs in its own start again and again, as it may without systemd.
    [[nodiscard]] bool start();
    [[nodiscard]] bool isRunning() const { return shell_ != nullptr; }
    void kill() { shell_.reset(); }
    void send(int signal) const { shell_->send(signal); }

    /// Gives the focus to the window of this application.
    void focus(const std::string& application);

    /// Presses and releases a key.
    void type();

    [[nodiscard]] LogindMock& logind() { return logind_; }

private:
    QVariant call(const char* service, const QString& path, const char* interface, const char* method,
                  const QVariantList& arguments = {});

    DesktopSession desktop_{{.display = false, .windowManager = false}};
    LogindMock logind_;
    BusMock displayManager_;  ///< without one the shell can't lock
    QDBusConnection bus_;
    QString keyboard_;
    std::unique_ptr<ChildProcess> shell_;
};

}  // namespace quorvane
