#include "desktop/support/BusService.h"

#include "desktop/support/OfWindow.h"

#include <filesystem>
#include <stdexcept>

namespace quorvane {
namespace {

constexpr const char* program = R"(
import os, sys, dbus, dbus.service, dbus.mainloop.glib
from gi.repository import GLib
ready, name, path, properties = sys.argv[1:5]
dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
bus = dbus.SessionBus()
values = eval(properties)
class Service(dbus.service.Object):
    @dbus.service.method('org.freedesktop.DBus.Properties', in_signature='ss', out_signature='v')
    def Get(self, interface, property):
        return values[interface][property]
service = Service(bus, path)
owned = dbus.service.BusName(name, bus)
os.write(int(ready), b'ready\n')
GLib.MainLoop().run()
)";

}  // namespace

std::string distributionPython() {
    const char* own = "/usr/bin/python3";
    return std::filesystem::exists(own) ? own : "python3";
}

BusService::BusService(const std::string& name, const std::string& path, const std::string& properties,
                       const std::string& title)
    : process_(ofWindow(title, title, {distributionPython(), "-c", program, "{ready}", name, path, properties})) {
    if (!process_.readyLine(20s)) throw std::runtime_error(name + " does not start");
}

}  // namespace quorvane
