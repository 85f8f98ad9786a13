#pragma once

#include "desktop/support/ChildProcess.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <csignal>
#include <string>
#include <vector>

namespace quorvane {

/// A program on one of the test's buses that owns a name and says and answers what the test decides.
class BusMock {
public:
    static constexpr const char* ownInterface = "org.freedesktop.DBus.Mock";

    /// On the session bus, with one object and interface that are called as the service is, or an object at `path`.
    explicit BusMock(const std::string& service, const std::string& path = {});
    /// On the system bus; `arguments` are those of python3-dbusmock.
    BusMock(const std::string& service, const std::vector<std::string>& arguments);
    ~BusMock();

    QDBusMessage call(const std::string& path, const std::string& interface, const std::string& method,
                      const QVariantList& arguments = {});

    /// `code` is Python: "ret = True".
    void setAnswer(const std::string& path, const std::string& interface, const std::string& method,
                   const std::string& in, const std::string& out, const std::string& code);
    void setAnswer(const std::string& method, const std::string& in, const std::string& out, const std::string& code) {
        setAnswer(path_, service_, method, in, out, code);
    }
    void emitSignal(const std::string& path, const std::string& interface, const std::string& signal,
                    const std::string& signature, const QVariantList& arguments);
    void emitSignal(const std::string& signal, const std::string& signature, const QVariantList& arguments) {
        emitSignal(path_, service_, signal, signature, arguments);
    }

    /// It no longer answers, but stays on the bus.
    void hang() { process_.send(SIGSTOP); }
    void kill() { process_.kill(); }

private:
    BusMock(const std::string& service, const std::vector<std::string>& arguments, const char* variable);

    std::string service_;
    std::string path_;
    ChildProcess process_;
    QDBusConnection bus_;
};

}  // namespace quorvane
