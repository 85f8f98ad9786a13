#pragma once

#include "desktop/support/ChildProcess.h"

#include <csignal>
#include <string>

namespace quorvane {

/// The interpreter for which the distribution's modules are installed.
[[nodiscard]] std::string distributionPython();

/// A program on the test's session bus that owns a name and answers for properties of one object.
class BusService {
public:
    /// `properties` are Python: {"interface": {"Name": value}}, with the types of the module dbus. With a title it
    /// shows a window, whose class is the title too.
    BusService(const std::string& name, const std::string& path, const std::string& properties,
               const std::string& title = {});

    [[nodiscard]] pid_t pid() const { return process_.pid(); }

    /// It no longer answers, but stays on the bus.
    void hang() { process_.send(SIGSTOP); }

private:
    ChildProcess process_;
};

}  // namespace quorvane
